// Scrolling the diary with its scroll bar: by line, by page, by the thumb, and past both ends.

#include "tests/driver/wait.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class Scroll : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        WriteNumber(L"CurrentView", ViewDiary);
    }

    enum class Part { LineUp, LineDown, PageUp, PageDown };

    /// Clicks an arrow of the scroll bar, or the track right beside it for a page.
    static bool ClickBar(Program& program, Part part) {
        RECT bar{};
        ::GetClientRect(program.ScrollBar(), &bar);
        const LONG arrow = ::GetSystemMetrics(SM_CYVSCROLL);
        LONG y = 0;
        switch (part) {
            case Part::LineUp:
                y = arrow / 2;
                break;
            case Part::LineDown:
                y = bar.bottom - arrow / 2;
                break;
            case Part::PageUp:
                y = arrow + 2;
                break;
            case Part::PageDown:
                y = bar.bottom - arrow - 3;
                break;
        }
        return program.ClickAt(program.ScrollBar(), {bar.right / 2, y}) && program.Settle();
    }

    /// Whether the day comes to be the first one that the diary shows.
    static bool Shows(Program& program, Day day) {
        return WaitFor([&] { return program.FirstDay() == day; });
    }
};

TEST_F(Scroll, MovesByLineAndByPage) {
    MakeSampleDiary(L"Anna");
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const Day start = AddDays(Today, -10);
    const int position = program.Scroll().nPos;
    ASSERT_TRUE(Shows(program, start));
    struct Step {
        const char* label;
        Part part;
        int days;  // of the first day shown, counted from the start
    };
    const std::array<Step, 6> steps = {{
        {"line up", Part::LineUp, -1},
        {"line down", Part::LineDown, 0},
        {"line down again", Part::LineDown, 1},
        {"page down", Part::PageDown, 11},
        {"page up", Part::PageUp, 1},
        {"page up again", Part::PageUp, -9},
    }};
    for (const Step& step : steps) {
        SCOPED_TRACE(step.label);
        const Picture before = Program::Look(program.Agenda());
        ASSERT_TRUE(ClickBar(program, step.part));
        EXPECT_TRUE(Shows(program, AddDays(start, step.days)));
        EXPECT_EQ(program.Scroll().nPos, position + step.days);
        EXPECT_TRUE(WaitFor([&] { return !(Program::Look(program.Agenda()) == before); }))
            << "the agenda does not follow";
    }
    program.Keep(L"scrolled");
    EXPECT_TRUE(program.Exit());
}

TEST_F(Scroll, PastTheFirstDayTheRangeGrowsAtItsStart) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", L""));  // no records: the range is [0, 365]
    const SCROLLINFO before = program.Scroll();
    const Day first = program.FirstDay();
    EXPECT_EQ(before.nPos, 0);
    ASSERT_TRUE(ClickBar(program, Part::LineUp));
    EXPECT_TRUE(Shows(program, AddDays(first, -1)));
    SCROLLINFO now = program.Scroll();
    EXPECT_EQ(now.nMin, 0);
    EXPECT_EQ(now.nMax, before.nMax + 1);
    EXPECT_EQ(now.nPos, 0);
    // The thumb is at the top and leaves no track above it to click for a page.
    ::SendMessageW(program.Diary(), WM_VSCROLL, SB_PAGEUP, 0);
    EXPECT_TRUE(Shows(program, AddDays(first, -11)));
    now = program.Scroll();
    EXPECT_EQ(now.nMax, before.nMax + 11);
    EXPECT_EQ(now.nPos, 0);
    EXPECT_TRUE(program.Exit());
}

TEST_F(Scroll, PastTheLastDayTheRangeGrowsAtItsEnd) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", L""));
    const Day first = program.FirstDay();
    const int position = program.Scroll().nPos;
    const int last = program.Scroll().nMax;
    int days = 0;
    while (position + days <= last) {
        ::SendMessageW(program.Diary(), WM_VSCROLL, SB_PAGEDOWN, 0);
        days += 10;
    }
    EXPECT_TRUE(Shows(program, AddDays(first, days)));
    const SCROLLINFO now = program.Scroll();
    EXPECT_EQ(now.nMin, 0);
    EXPECT_EQ(now.nMax, position + days);
    EXPECT_EQ(now.nPos, position + days);
    EXPECT_TRUE(program.Exit());
}

TEST_F(Scroll, FollowsTheThumbOnlyWhenItIsReleased) {
    MakeSampleDiary(L"Anna");
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const SCROLLINFO before = program.Scroll();
    const Day first = program.FirstDay();
    RECT bar{};
    ::GetClientRect(program.ScrollBar(), &bar);
    const POINT thumb = program.ThumbCentre();
    ASSERT_GT(thumb.y, 0);
    const POINT target{thumb.x, bar.bottom / 5};
    ASSERT_TRUE(program.Drag(program.ScrollBar(), thumb, target, [&] {
        ASSERT_TRUE(WaitFor([&] { return program.Scroll().nTrackPos < before.nPos; }));
        ASSERT_TRUE(program.Settle());
        EXPECT_EQ(program.FirstDay(), first) << "dragging alone moves nothing";
    }));
    ASSERT_TRUE(WaitFor([&] { return program.Scroll().nPos < before.nPos; }));
    const SCROLLINFO now = program.Scroll();
    EXPECT_TRUE(Shows(program, AddDays(first, now.nPos - before.nPos)));
    EXPECT_EQ(now.nMax, before.nMax);
    program.Keep(L"dragged");
    EXPECT_TRUE(program.Exit());
}

}  // namespace
}  // namespace lunara::test
