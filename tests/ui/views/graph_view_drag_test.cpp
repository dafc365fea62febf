// The graph view: tapping and dragging points, with the button and move messages that a pen sends.

#include "tests/support/user_data_access.h"
#include "tests/ui/views/graph_view_test_support.h"

namespace lunara::test {
namespace {

class GraphViewDrag : public GraphView {
  protected:
    HWND Chart() const { return Item(View::ChartId); }
    void Down(POINT at) {
        ::SendMessageW(Chart(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    }
    void Move(POINT at) {
        ::SendMessageW(Chart(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    }
    void Up(POINT at) { ::SendMessageW(Chart(), WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y)); }
    bool IsDragging() const { return ::GetCapture() == Chart(); }
    /// The chart pixel of a day's value on an axis [minimum, maximum]; `days` counts from today.
    POINT At(int days, std::int32_t value, std::int32_t minimum, std::int32_t maximum) {
        SYSTEMTIME start{};
        FromDateKey(Start(), start);
        const LONG column = DaysBetween(DayFromToday(days), start) + 1;
        const LONG width = DayWidth();
        RECT client{};
        ::GetClientRect(Chart(), &client);
        const ChartMapping mapping(client, GraphLeftColumnPx, {minimum, maximum, {}});
        return mapping.ToPixel(
            {static_cast<std::int32_t>(GraphLeftColumnPx - width / 2 + column * width), value});
    }
    // Pixels on the default axis of each unit and of bleeding.
    POINT Warm98(int days, std::int32_t value) { return At(days, value, 9650, 9850); }
    POINT Warm36(int days, std::int32_t value) { return At(days, value, 3550, 3750); }
    POINT Level(int days, std::int32_t level) { return At(days, level, 0, 4); }
    /// Presses at one point, moves to another by way of a third, and releases there.
    void Drag(POINT from, POINT to) {
        Down(from);
        Move({from.x, (from.y + to.y) / 2});
        Move(to);
        Up(to);
        Paint();
    }
};

TEST_F(GraphViewDrag, FahrenheitIsDraggedToANewValue) {
    Warm(-2, 9720);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    const POINT to = Warm98(-2, 9790);
    Drag(Warm98(-2, 9720), to);
    EXPECT_EQ(Current(), KeyFromToday(-2));
    EXPECT_EQ(data->GetTemperature(), 9790);
    EXPECT_EQ(Entry(), L"97.9");
    EXPECT_EQ(SpinPosition(), 979);
    EXPECT_EQ(Selection(), 6);
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(-2));
}

TEST_F(GraphViewDrag, CelsiusIsStoredAsFahrenheit) {
    Warm(-2, 9700);  // 36.1
    MakeIn(GraphShowTemperature, MeasureCelsius);
    const POINT from = Warm36(-2, 3610);
    Down(from);
    EXPECT_EQ(Entry(), L"36.1");
    Move(Warm36(-2, 3700));
    Up(Warm36(-2, 3700));
    EXPECT_EQ(data->GetTemperature(), 9860);
    EXPECT_EQ(Entry(), L"37.0");
}

TEST_F(GraphViewDrag, BleedingIsDraggedToALevel) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    const struct {
        const char* label;
        std::int32_t from;
        std::int32_t to;
        const wchar_t* word;
    } rows[] = {{"up", 0, 2, L"Norm"},
                {"to heavy", 2, 3, L"Heavy"},
                {"down", 3, 1, L"Slight"},
                {"to none", 1, 0, L"None"}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        POINT from = Level(-1, row.from);
        from.y = std::min<LONG>(from.y, ClientBox(Chart()).bottom - 1);
        Drag(from, Level(-1, row.to));
        EXPECT_EQ(data->GetBleeding(), row.to);
        EXPECT_EQ(Entry(), row.word);
    }
    EXPECT_EQ(data->Bleeding().Count(), 0);
}

// The bleeding axis ends at level 4, but the highest level that can be entered is heavy (3). A drag
// above the axis must enter 3.
TEST_F(GraphViewDrag, BleedingBeyondTheTopIsHeavy) {
    Bleed(-1, 2);
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    const POINT from = Level(-1, 2);
    Drag(from, {from.x, -200});
    EXPECT_EQ(data->GetBleeding(), 3);
}

TEST_F(GraphViewDrag, TemperatureBeyondTheLimitBecomesTheLimit) {
    Warm(-3, 9990);
    Warm(-2, 9970);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    // [9700, 9990] padded needs 319 units: more than 300, so the axis takes 400, [9645, 10045].
    const POINT from = At(-2, 9970, 9645, 10045);
    Drag(from, {from.x, 0});
    EXPECT_EQ(data->GetTemperature(), 10000);
    EXPECT_EQ(Entry(), L"100.0");
}

TEST_F(GraphViewDrag, CelsiusBeyondTheLimitBecomesTheLimit) {
    Warm(-3, 9990);  // 37.7
    Warm(-2, 9970);  // 37.6
    MakeIn(GraphShowTemperature, MeasureCelsius);
    // [3600, 3770] padded needs 187 units, so the axis takes 200, [3585, 3785].
    const POINT from = At(-2, 3760, 3585, 3785);
    Drag(from, {from.x, 0});
    EXPECT_EQ(data->GetTemperature(), 10000);
    EXPECT_EQ(Entry(), L"37.8");
}

TEST_F(GraphViewDrag, ADragGivesADayItsFirstTemperature) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    Drag(Warm98(0, 9750), Warm98(0, 9800));
    EXPECT_EQ(data->GetTemperature(), 9800);
}

// A tap must not store the value at which the point is drawn. That value is rounded, so it would
// coarsen the stored one, and a day without a value would get one.
TEST_F(GraphViewDrag, ATapSelectsAndChangesNothing) {
    Warm(-2, 9723);
    test::ClearDirty(*data);
    for (const DWORD measure : {MeasureFahrenheit, MeasureCelsius}) {
        MakeIn(GraphShowTemperature, measure);
        for (const int day : {-2, -1}) {
            const std::int32_t stored = day == -2 ? 9723 : NoTemperature;
            const std::int32_t shown =
                ShownTemperature(stored, static_cast<TemperatureMeasure>(measure));
            const POINT at = measure == MeasureCelsius ? Warm36(day, shown) : Warm98(day, shown);
            Down(at);
            EXPECT_TRUE(IsDragging());
            Up(at);
            Paint();
            EXPECT_EQ(Current(), KeyFromToday(day));
            EXPECT_EQ(data->GetTemperature(), stored);
        }
        EXPECT_FALSE(data->Temperature().dirty);
        ::DestroyWindow(view->Handle());
    }
}

TEST_F(GraphViewDrag, ARefusedDateStopsTheDrag) {
    class Refuser : public DataObserver {
        int CanChangeDate(UserData&, const SYSTEMTIME&, const SYSTEMTIME&) override { return 0; }
    } refuser;
    Warm(-2, 9720);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    data->AttachObserver(refuser);
    Down(Warm98(-2, 9720));
    EXPECT_FALSE(IsDragging());
    Up(Warm98(-2, 9800));
    EXPECT_EQ(Current(), KeyFromToday(0));
    // A tap on the current day needs no change of date, so nothing refuses it.
    Down(Warm98(0, 9750));
    EXPECT_TRUE(IsDragging());
    Up(Warm98(0, 9750));
    data->DetachObserver(refuser);
}

TEST_F(GraphViewDrag, AValueThatCannotBeEnteredStopsTheDrag) {
    Warm(-2, 10020);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    // [9700, 10020] padded needs 352 units, so the axis takes 400, [9660, 10060].
    Down(At(-2, 10020, 9660, 10060));
    EXPECT_EQ(Current(), KeyFromToday(-2));
    EXPECT_FALSE(IsDragging());
    EXPECT_EQ(Entry(), L"");
    Up(At(-2, 9800, 9660, 10060));
    EXPECT_EQ(data->GetTemperature(), 10020);
}

TEST_F(GraphViewDrag, ALevelWithoutAWordStopsTheDrag) {
    Bleed(-2, 4);
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Down(Level(-2, 4));
    EXPECT_EQ(Current(), KeyFromToday(-2));
    EXPECT_FALSE(IsDragging());
    EXPECT_EQ(Entry(), L"");
}

TEST_F(GraphViewDrag, FutureDaysCannotBeTapped) {
    for (const DWORD mode : {GraphShowBleeding, GraphShowTemperature}) {
        MakeIn(mode, MeasureFahrenheit);
        const LONG x = Level(1, 0).x;
        for (LONG y = 0; y < ClientBox(Chart()).bottom; y += 4) {
            Down({x, y});
            ASSERT_FALSE(IsDragging()) << y;
            Up({x, y});
        }
        EXPECT_EQ(Current(), KeyFromToday(0));
        ::DestroyWindow(view->Handle());
    }
}

// A tap on the day in the left margin, before the first one shown, scrolls there; since the points
// move under the pen, no drag begins.
TEST_F(GraphViewDrag, ATapOnTheDayBeforeScrollsThere) {
    Warm(-8, 9720);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    Down(Warm98(-8, 9720));
    EXPECT_EQ(Current(), KeyFromToday(-8));
    EXPECT_EQ(Start(), KeyFromToday(-10));
    EXPECT_EQ(Selection(), 3);
    EXPECT_FALSE(IsDragging());
    Up(Warm98(-8, 9800));
    EXPECT_EQ(data->GetTemperature(), 9720);
}

TEST_F(GraphViewDrag, ACancelledDragChangesNothing) {
    Warm(-2, 9720);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    Down(Warm98(-2, 9720));
    Move(Warm98(-2, 9800));
    ::ReleaseCapture();
    Up(Warm98(-2, 9800));
    EXPECT_EQ(data->GetTemperature(), 9720);
}

TEST_F(GraphViewDrag, ARefusedValueStaysWhatItWas) {
    class Refuser : public DataObserver {
        int CanChangeTemperature(UserData&, std::int32_t, std::int32_t) override { return 0; }
    } refuser;
    Warm(-2, 9720);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    data->AttachObserver(refuser);
    Drag(Warm98(-2, 9720), Warm98(-2, 9800));
    EXPECT_EQ(data->GetTemperature(), 9720);
    EXPECT_EQ(Entry(), L"97.2");
    data->DetachObserver(refuser);
}

TEST_F(GraphViewDrag, RefreshDuringADragEndsIt) {
    Warm(-2, 9720);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    Down(Warm98(-2, 9720));
    view->Refresh();
    EXPECT_FALSE(IsDragging());
    Up(Warm98(-2, 9800));
    EXPECT_EQ(data->GetTemperature(), 9720);
}

}  // namespace
}  // namespace lunara::test
