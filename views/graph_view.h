#pragma once

// The graph view: a chart of temperature or bleeding above the calendar strip, with the unit
// buttons beside the strip and a row of fields below, in which the current day's value is shown and
// changed. Answers the notifications of chart and strip, scrolls them together, and keeps graph and
// unit in the settings.
//
// A view that is created hidden makes its children lazily, so that the start of the program does
// not wait for them: when it is first shown, or when GVM_CREATECHILDREN, which it posts to itself,
// comes up in the message queue, whichever is first.

#include <cstdint>
#include <vector>

#include "diary/data_observer.h"
#include "platform/gdi.h"
#include "views/calendar_ctrl.h"
#include "views/chart_ctrl.h"
#include "views/day_scroll.h"
#include "views/graph_layout.h"
#include "views/graph_series.h"
#include "views/toggle_button.h"
#include "window/notification.h"
#include "window/window.h"

namespace lunara {

/// Is called after the graph or the unit has changed.
class GraphListener {
  public:
    GraphListener() = default;
    GraphListener(const GraphListener&) = delete;
    GraphListener& operator=(const GraphListener&) = delete;
    virtual ~GraphListener() = default;

    virtual void BleedingGraphSelected() = 0;
    virtual void TemperatureGraphSelected() = 0;
    /// The user chose another unit by its button.
    virtual void MeasureSelected(TemperatureMeasure /*measure*/) {}
    /// The user asked for help; `anchor` is the graph's place in the help file.
    virtual void HelpRequested(const WCHAR* anchor) = 0;
};

/// Posted by the view to itself: makes the children unless they exist. No parameters; result 0.
inline constexpr UINT GVM_CREATECHILDREN = WM_USER + 1;

class GraphView : public Window, public DataObserver, private NotificationSink {
  public:
    static constexpr int ChartId = 3001;
    static constexpr int CalendarId = 3002;
    static constexpr int ScrollBarId = 3003;
    static constexpr int FahrenheitId = 3004;
    static constexpr int CelsiusId = 3005;
    static constexpr int DatePickerId = 3006;
    static constexpr int ValueEditId = 3007;
    static constexpr int ValueSpinId = 3008;

    /// `userData` must outlive the view. While the window exists, the view observes it.
    explicit GraphView(UserData& userData);
    GraphView(const GraphView&) = delete;
    GraphView& operator=(const GraphView&) = delete;
    ~GraphView() override;

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// The graph shown, as a GraphShowFlag.
    std::uint32_t GetShowFlags() const { return mode; }
    /// Switch to that graph. Nothing happens for false, or when the graph is shown already.
    void SetShowBleeding(bool shown);
    void SetShowTemperature(bool shown);
    /// The unit, as a TemperatureMeasure.
    std::uint32_t GetMeasure() const { return measure; }

    /// Listeners are called in the order in which they were attached, and must stay valid while
    /// attached.
    void AttachListener(GraphListener& listener);
    void DetachListener(GraphListener& listener);

    /// The data set's current date.
    SYSTEMTIME GetCurrentDate() const;
    /// Makes `date` the data set's current date and scrolls it into view. Nothing happens when an
    /// observer refuses.
    void SetCurrentDate(const SYSTEMTIME& date);

    /// Rereads all values and repaints: call after a recomputation or when another day has begun.
    void Refresh();
    /// Resets scroll range, start and current date and repaints: call after the content of the data
    /// set was replaced.
    void Reload();

    // DataObserver. The view refuses no change.
    void DateChanged(UserData& changed, const SYSTEMTIME& old, const SYSTEMTIME& current) override;
    void TemperatureChanged(UserData& changed, std::int32_t value) override;
    void BleedingChanged(UserData& changed, std::int32_t value) override;

  private:
    // NotificationSink, for GetRange alone, which the chart calls directly. Its records arrive as
    // WM_NOTIFY, so Notify must not answer them a second time.
    LRESULT Notify(NMHDR& record) override;
    bool GetRange(NMHDR& record, int& minimum, int& maximum) override;

    LRESULT OnCreate();
    /// Creates and fills the children unless they exist. False when one cannot be made.
    bool EnsureChildren();
    bool HasChildren() const { return chart.Handle() != nullptr; }
    void OnDestroy();
    void OnPaint();
    void OnEraseBackground(HDC dc) const;
    void OnSize();
    void OnSpin(std::int32_t position);
    void OnCommand(UINT id, UINT notification);
    LRESULT OnFieldColor(HDC dc) const;
    /// Handles a notification from the calendar, the date picker or the chart: returns true and
    /// stores the result in `answer`. Returns false for a notification from any other control.
    bool OnNotify(NMHDR& record, LRESULT& answer);
    bool OnChartNotify(NMHDR& record, LRESULT& answer);
    void OnHelp();
    void OnPickDate(const SYSTEMTIME& picked);
    void OnGetPoints(ChartPoints& request);
    /// Makes the point's day the current date. True to refuse: an observer did, or the value cannot
    /// be entered.
    bool OnSelectPoint(const ChartValue& point);

    GraphMetrics Metrics() const;
    bool CreateChildren();
    HWND CreateField(const WCHAR* className, DWORD exStyle, DWORD style, const RECT& place, int id);
    void PlaceChildren();
    void FitColumns();
    std::int32_t Columns() const;

    GraphSeries Series() const { return {mode, measure}; }
    void ReadSettings();
    void SwitchMode(GraphShowFlag wanted, void (GraphListener::*selected)());
    void ShowMode();
    void ShowMeasure();
    void ResetChart();
    void ShowEntry();
    void ShowPickedDate();
    void ValueChanged();

    void ResetScroll();
    void SetStart(const SYSTEMTIME& newStart);
    void SelectCurrentColumn();
    void BringIntoView(const SYSTEMTIME& date);

    UserData& data;
    ChartCtrl chart;
    CalendarCtrl calendar;
    DayScroll scroll;
    ToggleButton fahrenheitButton;
    ToggleButton celsiusButton;
    HWND datePicker = nullptr;
    HWND valueEdit = nullptr;
    HWND valueSpin = nullptr;
    // Two defaults, deliberately different: temperature, set here, remains only where no settings
    // can be kept at all; ReadSettings takes bleeding when the settings hold no choice.
    GraphShowFlag mode = GraphShowTemperature;
    TemperatureMeasure measure = MeasureFahrenheit;
    LONG dayWidth = 10;  // px
    GraphLayout layout{};
    Bitmap legend;
    std::vector<GraphListener*> listeners;
};

}  // namespace lunara
