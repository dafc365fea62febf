#include "platform/gdi.h"

#include "tests/ui/ui_test.h"
#include "tests/ui/ui_test_ids.h"

namespace lunara::test {
namespace {

class Gdi : public UiTest {};

bool IsAlive(HGDIOBJ object) { return ::GetObjectType(object) != 0; }

TEST_F(Gdi, AnOwnerDeletesWhatItOwns) {
    const int before = LiveGdiObjects(GdiKind::Brush);
    HBRUSH handle = nullptr;
    {
        const Brush brush(::CreateSolidBrush(RGB(1, 2, 3)));
        handle = brush.Get();
        EXPECT_TRUE(brush);
        EXPECT_EQ(LiveGdiObjects(GdiKind::Brush), before + 1);
        EXPECT_EQ(LiveGdiObjects(GdiKind::Pen), 0);
        EXPECT_TRUE(IsAlive(handle));
    }
    EXPECT_FALSE(IsAlive(handle));
    EXPECT_EQ(LiveGdiObjects(GdiKind::Brush), before);
}

TEST_F(Gdi, AMovedOwnerHandsItsObjectOver) {
    Pen pen(::CreatePen(PS_SOLID, 1, RGB(1, 2, 3)));
    const HPEN handle = pen.Get();
    Pen other(std::move(pen));
    EXPECT_EQ(other.Get(), handle);
    Pen third(::CreatePen(PS_SOLID, 2, RGB(4, 5, 6)));
    const HPEN replaced = third.Get();
    EXPECT_EQ(LiveGdiObjects(GdiKind::Pen), 2);
    third = std::move(other);
    EXPECT_EQ(third.Get(), handle);
    EXPECT_FALSE(IsAlive(replaced));
    EXPECT_EQ(LiveGdiObjects(GdiKind::Pen), 1);
    third.Reset();
    EXPECT_FALSE(third);
    EXPECT_EQ(LiveGdiObjects(GdiKind::Pen), 0);
}

TEST_F(Gdi, AnOwnerOfNothingIsNotCounted) {
    const Font none;
    const Font failed(nullptr);
    EXPECT_FALSE(none);
    EXPECT_FALSE(failed);
    EXPECT_EQ(LiveGdiObjects(), 0);
}

TEST_F(Gdi, AMemoryDcIsDeletedAsADc) {
    HDC handle = nullptr;
    {
        const MemoryDc dc(::CreateCompatibleDC(nullptr));
        handle = dc.Get();
        EXPECT_EQ(LiveGdiObjects(GdiKind::MemoryDc), 1);
    }
    EXPECT_EQ(::GetObjectType(handle), 0U);
}

TEST_F(Gdi, SelectScopePutsThePreviousObjectBack) {
    const MemoryCanvas canvas(4, 4);
    const HGDIOBJ before = ::GetCurrentObject(canvas.Dc(), OBJ_PEN);
    const Pen pen(::CreatePen(PS_SOLID, 1, RGB(255, 0, 0)));
    {
        const SelectScope scope(canvas.Dc(), pen.Get());
        EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_PEN), pen.Get());
        EXPECT_EQ(scope.Previous(), before);
    }
    EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_PEN), before);
}

TEST_F(Gdi, BackgroundModeScopePutsThePreviousModeBack) {
    const MemoryCanvas canvas(4, 4);
    ::SetBkMode(canvas.Dc(), OPAQUE);
    {
        const BackgroundModeScope scope(canvas.Dc(), TRANSPARENT);
        EXPECT_EQ(::GetBkMode(canvas.Dc()), TRANSPARENT);
    }
    EXPECT_EQ(::GetBkMode(canvas.Dc()), OPAQUE);
}

TEST_F(Gdi, APaintScopeSelectsTheShellFontAndValidatesTheWindow) {
    ScriptedWindow window;
    HGDIOBJ font = nullptr;
    window.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_PAINT) {
            return false;
        }
        const PaintScope scope(window.Handle());
        font = ::GetCurrentObject(scope.Dc(), OBJ_FONT);
        return true;
    };
    ASSERT_EQ(window.Make(), 1);
    ::ShowWindow(window.Handle(), SW_SHOWNOACTIVATE);
    window.Invalidate(false);
    window.Update();
    EXPECT_EQ(font, ShellFont());
    EXPECT_FALSE(::GetUpdateRect(window.Handle(), nullptr, FALSE));
}

TEST_F(Gdi, AWindowDcScopeSelectsTheShellFont) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    const WindowDcScope scope(window.Handle());
    EXPECT_EQ(::GetCurrentObject(scope.Dc(), OBJ_FONT), ShellFont());
    EXPECT_EQ(::WindowFromDC(scope.Dc()), window.Handle());
}

TEST_F(Gdi, AMeasuringDcMeasuresTextLikeAWindowsDc) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    const WindowDcScope shown(window.Handle());
    const MeasuringDc measuring;
    for (const WCHAR* text : {TEXT("00"), TEXT("Bleeding: ")}) {
        SIZE expected{};
        SIZE measured{};
        ::GetTextExtentPoint32W(shown.Dc(), text, ::lstrlenW(text), &expected);
        ::GetTextExtentPoint32W(measuring.Dc(), text, ::lstrlenW(text), &measured);
        EXPECT_EQ(measured.cx, expected.cx);
        EXPECT_EQ(measured.cy, expected.cy);
    }
}

TEST_F(Gdi, TheShellFontIsTheSystemsMessageFontMadeOnce) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    ASSERT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0));
    LOGFONTW face{};
    ASSERT_NE(::GetObjectW(ShellFont(), sizeof(face), &face), 0);
    EXPECT_EQ(face.lfHeight, metrics.lfMessageFont.lfHeight);
    EXPECT_EQ(face.lfWeight, metrics.lfMessageFont.lfWeight);
    EXPECT_STREQ(face.lfFaceName, metrics.lfMessageFont.lfFaceName);
    EXPECT_EQ(ShellFont(), ShellFont());
    EXPECT_EQ(LiveGdiObjects(GdiKind::Font), 0);
}

TEST_F(Gdi, ABitmapResourceIsLoaded) {
    const Bitmap bitmap = LoadBitmapResource(TEST_BITMAP);
    ASSERT_TRUE(bitmap);
    const MemoryCanvas canvas(2, 2);
    const MemoryDc source(::CreateCompatibleDC(canvas.Dc()));
    const SelectScope scope(source.Get(), bitmap.Get());
    ::BitBlt(canvas.Dc(), 0, 0, 2, 2, source.Get(), 0, 0, SRCCOPY);
    EXPECT_EQ(canvas.Pixel(0, 0), RGB(255, 0, 0));
    EXPECT_EQ(canvas.Pixel(1, 0), RGB(0, 255, 0));
    EXPECT_EQ(canvas.Pixel(0, 1), RGB(0, 0, 255));
    EXPECT_EQ(canvas.Pixel(1, 1), RGB(255, 255, 255));
}

TEST_F(Gdi, BitmapsLieInTheProgramsOwnMemory) {
    const Bitmap loaded = LoadBitmapResource(TEST_BITMAP);
    const Bitmap made = MakePicture(7, 5);
    for (const Bitmap* bitmap : {&loaded, &made}) {
        BITMAP shape{};
        ASSERT_NE(::GetObjectW(bitmap->Get(), sizeof(shape), &shape), 0);
        EXPECT_NE(shape.bmBits, nullptr);
    }
}

TEST_F(Gdi, APictureHasTheGivenSizeAndItsTopRowFirst) {
    const Bitmap picture = MakePicture(7, 5);
    ASSERT_TRUE(picture);
    DIBSECTION shape{};
    ASSERT_NE(::GetObjectW(picture.Get(), sizeof(shape), &shape), 0);
    EXPECT_EQ(shape.dsBm.bmWidth, 7);
    EXPECT_EQ(shape.dsBm.bmHeight, 5);
    EXPECT_EQ(shape.dsBm.bmBitsPixel, 32);
    const MemoryDc dc(::CreateCompatibleDC(nullptr));
    const SelectScope scope(dc.Get(), picture.Get());
    ::SetPixel(dc.Get(), 2, 0, RGB(1, 2, 3));
    EXPECT_EQ(static_cast<const DWORD*>(shape.dsBm.bmBits)[2] & 0xFFFFFF, DWORD{0x010203});
}

TEST_F(Gdi, APictureWithoutAreaHoldsNone) {
    EXPECT_FALSE(MakePicture(0, 5));
    EXPECT_FALSE(MakePicture(7, 0));
}

TEST_F(Gdi, AMissingBitmapResourceHoldsNone) {
    const Bitmap bitmap = LoadBitmapResource(59999);
    EXPECT_FALSE(bitmap);
}

}  // namespace
}  // namespace lunara::test
