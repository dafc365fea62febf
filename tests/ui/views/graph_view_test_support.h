#pragma once

// Fixture with a graph view in a visible parent. Today is 15 March 2026 and the current date; the
// data set is empty until a test fills it with days relative to today.

#include <memory>

#include "tests/support/user_data_access.h"
#include "tests/ui/views/view_test_support.h"
#include "views/graph_view.h"
#include "window/settings.h"

// needs windows.h before it
#include "platform/pocketpc/common_controls.h"

namespace lunara::test {

class GraphView : public UiTest {
  protected:
    using View = lunara::GraphView;

    static constexpr int Width = 480;
    static constexpr int Height = 640;

    void SetUp() override {
        UiTest::SetUp();
        SetLocalNow(Today());
        data = std::make_unique<UserData>();
        data->SetCurrentDate(Today());
        ASSERT_EQ(parent.Make(nullptr, Width, Height), 1);
        ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
        view = std::make_unique<View>(*data);
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        view.reset();
        UiTest::TearDown();
    }

    static SYSTEMTIME Today() { return Day(2026, 3, 15); }
    static SYSTEMTIME DayFromToday(int days) {
        SYSTEMTIME date{};
        AddDays(Today(), days, date);
        return date;
    }
    /// Records a temperature, in hundredths of a degree Fahrenheit, `days` after today.
    void Warm(int days, std::int32_t value) {
        test::RecordTemperature(*data, ToDateKey(DayFromToday(days)), value);
    }
    /// Records a bleeding level `days` after today.
    void Bleed(int days, std::int32_t level) {
        test::RecordBleeding(*data, ToDateKey(DayFromToday(days)), level);
    }
    /// Writes a setting, and thereby creates the settings key.
    static void Store(const WCHAR* name, DWORD value) { Settings().WriteDword(name, value); }
    void Make(int width = Width, int height = Height) {
        ASSERT_EQ(
            view->Create(0, nullptr, TEXT("Graph view"), WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                         0, width, height, parent.Handle(), nullptr),
            1);
        Paint();
    }
    /// Creates the view with this graph and unit in its settings.
    void MakeIn(DWORD mode, DWORD measure) {
        Store(TEXT("GraphView_ShowFlags"), mode);
        Store(TEXT("TemperatureMeasure"), measure);
        Make();
    }
    void Paint() {
        ::RedrawWindow(view->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    HWND Item(int id) const { return ::GetDlgItem(view->Handle(), id); }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageW(view->Handle(), message, wParam, lParam);
    }
    LRESULT SendTo(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageW(Item(id), message, wParam, lParam);
    }
    void Tap(int id) {
        SendTo(id, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        SendTo(id, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    }
    void Spin(int position) {
        Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, position),
             reinterpret_cast<LPARAM>(Item(View::ValueSpinId)));
    }
    int SpinPosition() { return static_cast<int>(LOWORD(SendTo(View::ValueSpinId, UDM_GETPOS))); }
    std::pair<int, int> SpinRange() {
        const LRESULT range = SendTo(View::ValueSpinId, UDM_GETRANGE);
        return {HIWORD(range), LOWORD(range)};
    }
    std::wstring Entry() const { return TextOf(Item(View::ValueEditId)); }
    SYSTEMTIME Picked() {
        SYSTEMTIME date{};
        SendTo(View::DatePickerId, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date));
        return date;
    }
    void Pick(SYSTEMTIME date, DWORD flags = GDT_VALID) {
        NMDATETIMECHANGE change{};
        change.nmhdr.hwndFrom = Item(View::DatePickerId);
        change.nmhdr.idFrom = View::DatePickerId;
        change.nmhdr.code = static_cast<UINT>(DTN_DATETIMECHANGE);
        change.dwFlags = flags;
        change.st = date;
        Send(WM_NOTIFY, View::DatePickerId, reinterpret_cast<LPARAM>(&change));
    }
    DateKey Current() const { return ToDateKey(view->GetCurrentDate()); }
    /// The first day shown.
    DateKey Start() {
        CalendarHitTest hit{};
        SendTo(View::CalendarId, CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        return ToDateKey(hit.date);
    }
    LONG DayWidth() {
        CalendarHitTest hit{};
        SendTo(View::CalendarId, CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        return hit.cell.right - hit.cell.left;
    }
    ScrollState Scroll() {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_RANGE | SIF_POS;
        ::GetScrollInfo(Item(View::ScrollBarId), SB_CTL, &info);
        return {info.nMin, info.nMax, info.nPos};
    }
    std::int32_t Selection() const {
        return static_cast<ChartCtrl*>(Window::FromHandle(Item(View::ChartId)))->Selection();
    }
    static DateKey KeyFromToday(int days) { return ToDateKey(DayFromToday(days)); }

    ScriptedWindow parent;
    std::unique_ptr<UserData> data;
    std::unique_ptr<View> view;
};

}  // namespace lunara::test
