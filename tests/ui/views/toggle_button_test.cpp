// The toggle button: flat or bevelled, with a state that its owner sets.

#include "views/toggle_button.h"

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

constexpr int ButtonId = 3004;
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF Light = RGB(216, 208, 200);
constexpr COLORREF Dark = RGB(120, 96, 88);
constexpr COLORREF Ground = RGB(168, 152, 144);
constexpr int Width = 34;
constexpr int Height = 28;

class NamedSink : public NotificationSink {
  public:
    NamedSink(std::vector<std::string>& calls, std::string sinkName)
        : log(calls), name(std::move(sinkName)) {}
    LRESULT Notify(NMHDR& record) override {
        log.push_back(name + ":" + std::to_string(record.idFrom) + ":" +
                      std::to_string(record.code));
        return 0;
    }

  private:
    std::vector<std::string>& log;
    std::string name;
};

class ToggleButton : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(parent.Make(), 1);
        Make(flat, TEXT("\u00B0F"));
        Make(bevelled, TEXT("\u00B0F"));
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        UiTest::TearDown();
    }
    void Make(lunara::ToggleButton& button, const WCHAR* text) {
        ASSERT_EQ(button.Create(0, nullptr, text, WS_CHILD, 0, 0, Width, Height, parent.Handle(),
                                reinterpret_cast<HMENU>(ButtonId)),
                  1);
    }
    static LRESULT SetCheck(const lunara::ToggleButton& button, WPARAM state) {
        return ::SendMessageW(button.Handle(), BM_SETCHECK, state, 0);
    }
    static LRESULT GetCheck(const lunara::ToggleButton& button) {
        return ::SendMessageW(button.Handle(), BM_GETCHECK, 0, 0);
    }

    ScriptedWindow parent;
    lunara::ToggleButton flat{ToggleLook::Flat};
    lunara::ToggleButton bevelled{ToggleLook::Bevelled};
};

TEST_F(ToggleButton, StartsUnchecked) { EXPECT_EQ(GetCheck(flat), 0); }

TEST_F(ToggleButton, KeepsTheStateThatItIsGiven) {
    const struct {
        const char* label;
        WPARAM given;
        LRESULT kept;
    } rows[] = {{"checked", 1, 1},
                {"unchecked", 0, 0},
                {"2", 2, 2},
                {"5 becomes 2", 5, 2},
                {"-1 becomes 2", static_cast<WPARAM>(-1), 2}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_EQ(SetCheck(flat, row.given), 0);
        EXPECT_EQ(GetCheck(flat), row.kept);
    }
}

TEST_F(ToggleButton, ATapDoesNotChangeTheState) {
    ::SendMessageW(flat.Handle(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(GetCheck(flat), 0);
}

TEST_F(ToggleButton, ATapReachesTheParentAsCommandAndEverySinkInOrder) {
    std::vector<std::string> log;
    LPARAM from = 0;
    parent.handler = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
        if (message == WM_COMMAND) {
            log.push_back("parent:" + std::to_string(LOWORD(wParam)) + ":" +
                          std::to_string(HIWORD(wParam)));
            from = lParam;
        }
        return message == WM_COMMAND;
    };
    NamedSink first(log, "first");
    NamedSink second(log, "second");
    flat.AttachSink(first);
    flat.AttachSink(second);
    EXPECT_EQ(::SendMessageW(flat.Handle(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5)), 0);
    EXPECT_EQ(log, (std::vector<std::string>{"parent:3004:0", "first:3004:0", "second:3004:0"}));
    EXPECT_EQ(reinterpret_cast<HWND>(from), flat.Handle());
    EXPECT_EQ(parent.CountOf(WM_NOTIFY), 0);
}

TEST_F(ToggleButton, ErasesItsBackgroundInTheColourOfItsStateAndLook) {
    const struct {
        const char* label;
        const lunara::ToggleButton* button;
        WPARAM state;
        COLORREF color;
    } rows[] = {{"flat", &flat, 0, White},
                {"flat, checked", &flat, 1, Black},
                {"flat, third state", &flat, 5, White},
                {"bevelled", &bevelled, 0, Ground},
                {"bevelled, checked", &bevelled, 1, Ground}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        SetCheck(*row.button, row.state);
        MemoryCanvas canvas(Width, Height, RGB(1, 2, 3));
        EXPECT_EQ(::SendMessageW(row.button->Handle(), WM_ERASEBKGND,
                                 reinterpret_cast<WPARAM>(canvas.Dc()), 0),
                  1);
        EXPECT_EQ(canvas.CountOf(row.color), Width * Height);
    }
}

TEST_F(ToggleButton, FlatLookIsBlackOnWhiteOrWhiteOnBlack) {
    const struct {
        const char* label;
        WPARAM state;
        COLORREF ground;
        COLORREF text;
    } rows[] = {{"unchecked", 0, White, Black},
                {"checked", 1, Black, White},
                {"third state", 5, White, Black}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        SetCheck(flat, row.state);
        MemoryCanvas canvas(Width, Height, RGB(1, 2, 3));
        flat.Draw(canvas.Dc(), canvas.Bounds());
        EXPECT_EQ(canvas.Pixel(3, 3), row.ground);
        EXPECT_EQ(canvas.Pixel(0, 0), Black);  // the frame
        EXPECT_EQ(canvas.Pixel(Width - 1, Height - 1), Black);
        const int frame = 2 * (Width + Height) - 4;
        if (row.text == Black) {
            EXPECT_GT(canvas.CountOf(Black), frame + 5);
        } else {
            EXPECT_GT(canvas.CountOf(White), 5);
        }
        EXPECT_EQ(::GetTextColor(canvas.Dc()), Black);
        EXPECT_EQ(::GetBkColor(canvas.Dc()), White);
    }
}

TEST_F(ToggleButton, BevelledLookIsRaisedUnlessItIsChecked) {
    const struct {
        const char* label;
        WPARAM state;
        COLORREF topLeft;
        COLORREF bottomRight;
    } rows[] = {{"unchecked", 0, Light, Dark},
                {"checked", 1, Dark, Light},
                {"third state", 5, Light, Dark}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        SetCheck(bevelled, row.state);
        MemoryCanvas canvas(Width, Height);
        bevelled.Draw(canvas.Dc(), canvas.Bounds());
        EXPECT_EQ(canvas.Pixel(Width / 2, 0), row.topLeft);
        EXPECT_EQ(canvas.Pixel(0, Height / 2), row.topLeft);
        EXPECT_EQ(canvas.Pixel(1, Height / 2), row.topLeft);
        EXPECT_EQ(canvas.Pixel(Width / 2, Height - 1), row.bottomRight);
        EXPECT_EQ(canvas.Pixel(Width - 1, Height / 2), row.bottomRight);
        EXPECT_EQ(canvas.Pixel(4, 4), Ground);
    }
}

/// The left and top of the bounding box of the text's black pixels, inside the frame.
POINT TextCorner(const MemoryCanvas& canvas) {
    POINT corner = {Width, Height};
    for (int y = 3; y < Height - 3; ++y) {
        for (int x = 3; x < Width - 3; ++x) {
            if (canvas.Pixel(x, y) == Black) {
                corner.x = std::min<LONG>(corner.x, x);
                corner.y = std::min<LONG>(corner.y, y);
            }
        }
    }
    return corner;
}

TEST_F(ToggleButton, SunkenTextMovesRightAndDown) {
    MemoryCanvas raised(Width, Height);
    bevelled.Draw(raised.Dc(), raised.Bounds());
    SetCheck(bevelled, 1);
    MemoryCanvas sunken(Width, Height);
    bevelled.Draw(sunken.Dc(), sunken.Bounds());
    EXPECT_EQ(TextCorner(sunken).x, TextCorner(raised).x + 1);
    EXPECT_EQ(TextCorner(sunken).y, TextCorner(raised).y + 1);
}

TEST_F(ToggleButton, TextLongerThan31CharactersIsCut) {
    constexpr int Wide = 600;
    const std::wstring cut(31, L'i');
    lunara::ToggleButton longer(ToggleLook::Flat);
    lunara::ToggleButton exact(ToggleLook::Flat);
    Make(longer, (cut + L"WWWWWWWW").c_str());
    Make(exact, cut.c_str());
    MemoryCanvas first(Wide, Height);
    MemoryCanvas second(Wide, Height);
    longer.Draw(first.Dc(), first.Bounds());
    exact.Draw(second.Dc(), second.Bounds());
    EXPECT_GT(first.CountOf(Black), 2 * (Wide + Height));
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Wide; ++x) {
            ASSERT_EQ(first.Pixel(x, y), second.Pixel(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(ToggleButton, WithoutAreaNothingIsDrawn) {
    MemoryCanvas canvas(4, 4);
    flat.Draw(canvas.Dc(), {0, 0, 0, 0});
    EXPECT_EQ(canvas.CountOf(White), 16);
}

}  // namespace
}  // namespace lunara::test
