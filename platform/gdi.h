#pragma once

// Drawing objects. Owners are move-only and delete what they own; scopes undo themselves. Declare
// the object before the scope that selects it, so that it is never deleted while selected.
//
// Owners are counted per kind (Wine reports no counts of its own); every UI test ends by asserting
// that none is left over.

#include <utility>

#include "platform/win32.h"

namespace lunara {

enum class GdiKind { Font, Brush, Pen, Bitmap, Region, MemoryDc, Count };

/// Live owners of that kind, and of all kinds together.
int LiveGdiObjects(GdiKind kind);
int LiveGdiObjects();

namespace detail {
void CountGdiObject(GdiKind kind, int change);
}

/// Owns a handle of the given kind, or none.
template <typename Handle, GdiKind Kind>
class GdiOwner {
  public:
    GdiOwner() = default;
    explicit GdiOwner(Handle owned) : handle(owned) {
        if (handle != nullptr) {
            detail::CountGdiObject(Kind, 1);
        }
    }
    GdiOwner(GdiOwner&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    GdiOwner& operator=(GdiOwner&& other) noexcept {
        if (this != &other) {
            Reset();
            handle = std::exchange(other.handle, nullptr);
        }
        return *this;
    }
    GdiOwner(const GdiOwner&) = delete;
    GdiOwner& operator=(const GdiOwner&) = delete;
    ~GdiOwner() { Reset(); }

    Handle Get() const { return handle; }
    explicit operator bool() const { return handle != nullptr; }

    void Reset() {
        if (handle != nullptr) {
            if constexpr (Kind == GdiKind::MemoryDc) {
                ::DeleteDC(handle);
            } else {
                ::DeleteObject(handle);
            }
            detail::CountGdiObject(Kind, -1);
            handle = nullptr;
        }
    }

  private:
    Handle handle = nullptr;
};

using Font = GdiOwner<HFONT, GdiKind::Font>;
using Brush = GdiOwner<HBRUSH, GdiKind::Brush>;
using Pen = GdiOwner<HPEN, GdiKind::Pen>;
using Bitmap = GdiOwner<HBITMAP, GdiKind::Bitmap>;
using Region = GdiOwner<HRGN, GdiKind::Region>;
using MemoryDc = GdiOwner<HDC, GdiKind::MemoryDc>;

/// BeginPaint to EndPaint, with the shell font selected.
class PaintScope {
  public:
    explicit PaintScope(HWND painted);
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope();

    HDC Dc() const { return dc; }
    const PAINTSTRUCT& Paint() const { return paint; }

  private:
    HWND window;
    PAINTSTRUCT paint{};
    HDC dc;
    HGDIOBJ previousFont;
};

/// GetDC to ReleaseDC, with the shell font selected.
class WindowDcScope {
  public:
    explicit WindowDcScope(HWND drawn);
    WindowDcScope(const WindowDcScope&) = delete;
    WindowDcScope& operator=(const WindowDcScope&) = delete;
    ~WindowDcScope();

    HDC Dc() const { return dc; }

  private:
    HWND window;
    HDC dc;
    HGDIOBJ previousFont;
};

/// Selects an object (owned or stock) and puts the previous one back.
class SelectScope {
  public:
    SelectScope(HDC target, HGDIOBJ object) : dc(target), previous(::SelectObject(dc, object)) {}
    SelectScope(const SelectScope&) = delete;
    SelectScope& operator=(const SelectScope&) = delete;
    ~SelectScope() { ::SelectObject(dc, previous); }

    HGDIOBJ Previous() const { return previous; }

  private:
    HDC dc;
    HGDIOBJ previous;
};

/// Sets the background mode and puts the previous one back.
class BackgroundModeScope {
  public:
    BackgroundModeScope(HDC target, int mode) : dc(target), previous(::SetBkMode(dc, mode)) {}
    BackgroundModeScope(const BackgroundModeScope&) = delete;
    BackgroundModeScope& operator=(const BackgroundModeScope&) = delete;
    ~BackgroundModeScope() { ::SetBkMode(dc, previous); }

  private:
    HDC dc;
    int previous;
};

/// Sets the text colour and puts the previous one back.
class TextColorScope {
  public:
    TextColorScope(HDC target, COLORREF color) : dc(target), previous(::SetTextColor(dc, color)) {}
    TextColorScope(const TextColorScope&) = delete;
    TextColorScope& operator=(const TextColorScope&) = delete;
    ~TextColorScope() { ::SetTextColor(dc, previous); }

  private:
    HDC dc;
    COLORREF previous;
};

/// A device context without a picture, for measuring texts of the shell font, which is selected. It
/// measures as one of a window would, and nobody has to be asked for it.
class MeasuringDc {
  public:
    MeasuringDc();
    MeasuringDc(const MeasuringDc&) = delete;
    MeasuringDc& operator=(const MeasuringDc&) = delete;
    ~MeasuringDc() = default;

    HDC Dc() const { return dc.Get(); }

  private:
    MemoryDc dc;
    SelectScope font;
};

/// The font of the program's windows and controls: the system's message font, made once (and not
/// counted). The one place where it is chosen.
HFONT ShellFont();

// Bitmaps of the program are its own memory, not the display's: each bitmap that is made for the
// display, and each selection of one, makes Wine ask its server three questions about the monitors.

/// A picture of 32 bits per pixel; holds none when it is empty or there is no memory for it.
Bitmap MakePicture(LONG width, LONG height);

/// Bitmap resource `id` of the application instance; holds none when it cannot be loaded.
Bitmap LoadBitmapResource(UINT id);

}  // namespace lunara
