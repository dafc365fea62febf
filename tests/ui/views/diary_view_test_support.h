#pragma once

// Fixture with a diary view in a visible parent. Today is 15 March 2026, the data set is empty.

#include <memory>

#include "diary/user_data.h"
#include "tests/ui/views/view_test_support.h"
#include "views/diary_view.h"

namespace lunara::test {

class DiaryView : public UiTest {
  protected:
    using View = lunara::DiaryView;

    static constexpr int WidthPx = 480;
    static constexpr int HeightPx = 640;
    static constexpr LONG RowPx = 32;  // HeightPx over twenty days

    void SetUp() override {
        UiTest::SetUp();
        SetLocalNow(Day(2026, 3, 15));
        data = std::make_unique<UserData>();
        view = std::make_unique<View>(*data);
        ASSERT_EQ(parent.Make(nullptr, 800, 700), 1);
        ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        view.reset();
        UiTest::TearDown();
    }

    void Make(int width = WidthPx, int height = HeightPx) {
        ASSERT_EQ(view->Create(0, nullptr, TEXT("Diary view"), WS_CHILD | WS_VISIBLE, 0, 0, width,
                               height, parent.Handle(), nullptr),
                  1);
        PumpMessages();
    }
    HWND Child(int id) const { return ::GetDlgItem(view->Handle(), id); }
    HWND Agenda() const { return Child(View::AgendaId); }
    HWND Calendar() const { return Child(View::CalendarId); }

    /// The first day shown.
    DateKey Start() const {
        CalendarHitTest top{};
        ::SendMessageW(Calendar(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&top));
        return ToDateKey(top.date);
    }
    /// The cell of the first day in the calendar's strip.
    Box TopCell() const {
        CalendarHitTest top{};
        ::SendMessageW(Calendar(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&top));
        return BoxOf(top.cell);
    }
    SCROLLINFO Scroll() const {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_RANGE | SIF_POS;
        ::GetScrollInfo(Child(View::ScrollBarId), SB_CTL, &info);
        return info;
    }
    void ExpectScroll(int maximum, int position) const {
        const SCROLLINFO info = Scroll();
        EXPECT_EQ(info.nMin, 0);
        EXPECT_EQ(info.nMax, maximum);
        EXPECT_EQ(info.nPos, position);
    }
    void ScrollBy(int request) {
        ::SendMessageW(view->Handle(), WM_VSCROLL, static_cast<WPARAM>(request),
                       reinterpret_cast<LPARAM>(Child(View::ScrollBarId)));
    }
    std::int32_t LineCount() const {
        return static_cast<AgendaCtrl*>(Window::FromHandle(Agenda()))->LineCount();
    }

    struct Row {
        AgendaRowRequest request;
        AgendaItem items[MaxDiaryItems];
    };
    /// Asks the view for a row as the agenda does.
    Row AskRow(std::int32_t index, LRESULT expected = 1) {
        Row row{};
        row.request.header = {Agenda(), View::AgendaId, AGN_GETROW};
        row.request.rowIndex = index;
        row.request.lineCount = LineCount();
        EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, View::AgendaId,
                                 reinterpret_cast<LPARAM>(&row)),
                  expected);
        return row;
    }
    /// Taps the middle of a cell of the agenda; columns and rows count from 0.
    void Tap(int column, int row) {
        const LONG cell = RowPx;
        ::SendMessageW(Agenda(), WM_LBUTTONUP, 0,
                       MAKELPARAM(column * cell + cell / 2, row * cell + cell / 2));
    }

    ScriptedWindow parent;
    std::unique_ptr<UserData> data;
    std::unique_ptr<View> view;
};

}  // namespace lunara::test
