// Scrolling the diary with its scroll bar: by line, by page, by the thumb, past both ends.

#include "tests/e2e/fixture.h"
#include "tests/e2e/wait.h"

namespace lunara::e2e {
namespace {

class Scrolling : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        WriteNumber(L"CurrentView", ViewDiary);
    }

    enum class Part { LineUp, LineDown, PageUp, PageDown };

    /// Clicks a part of the scroll bar: its arrows, or beside them, where the thumb is not.
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

    static bool Shows(Program& program, Day day) {
        return WaitFor([&] { return program.FirstDay() == day; });
    }
};

TEST_F(Scrolling, ByLineAndByPage) {
    MakeSampleDiary(L"Anna");
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const Day start = AddDays(Today, -10);
    const int position = program.Scroll().nPos;
    ASSERT_TRUE(Shows(program, start));
    struct Step {
        const char* label;
        Part part;
        int days;  // from the start
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

TEST_F(Scrolling, PastTheFirstDayTheRangeGrowsAtItsStart) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", L""));  // no records: 0..365
    const SCROLLINFO before = program.Scroll();
    const Day first = program.FirstDay();
    EXPECT_EQ(before.nPos, 0);
    ASSERT_TRUE(ClickBar(program, Part::LineUp));
    EXPECT_TRUE(Shows(program, AddDays(first, -1)));
    SCROLLINFO now = program.Scroll();
    EXPECT_EQ(now.nMin, 0);
    EXPECT_EQ(now.nMax, before.nMax + 1);
    EXPECT_EQ(now.nPos, 0);
    // The thumb stands at the top, so there is nothing beside it to click for a page.
    ::SendMessageW(program.Diary(), WM_VSCROLL, SB_PAGEUP, 0);
    EXPECT_TRUE(Shows(program, AddDays(first, -11)));
    now = program.Scroll();
    EXPECT_EQ(now.nMax, before.nMax + 11);
    EXPECT_EQ(now.nPos, 0);
    EXPECT_TRUE(program.Exit());
}

TEST_F(Scrolling, PastTheLastDayTheRangeGrowsAtItsEnd) {
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

TEST_F(Scrolling, ByTheThumbOnlyWhenItIsReleased) {
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
}  // namespace lunara::e2e
