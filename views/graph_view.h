#pragma once

// The graph: a chart of the temperature or of the bleeding over the calendar strip, with the unit
// buttons beside it and a row of fields below, where the current day's value is shown and changed.
// Answers what the chart and the strip ask, scrolls them together, and keeps its choice of graph
// and unit in the settings.
//
// A view that is created hidden makes its children when it is first shown, or else as soon as the
// thread has nothing older to do: the start need not wait for what it does not show.

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

/// Is told when the graph view changes over.
class GraphListener {
  public:
    GraphListener() = default;
    GraphListener(const GraphListener&) = delete;
    GraphListener& operator=(const GraphListener&) = delete;
    virtual ~GraphListener() = default;

    virtual void BleedingGraphSelected() = 0;
    virtual void TemperatureGraphSelected() = 0;
    /// Another unit was chosen by its button.
    virtual void MeasureSelected(TemperatureMeasure /*measure*/) {}
    /// The user asked for help; `anchor` is the graph's place in the help file.
    virtual void HelpRequested(const WCHAR* anchor) = 0;
};

/// Posted by the view to itself: its children are to be made now. No parameters; result 0.
inline constexpr UINT GVM_COMPLETE = WM_USER + 1;

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
    /// Change over to that graph. With false, or for the graph that is shown already, nothing
    /// happens.
    void SetShowBleeding(bool shown);
    void SetShowTemperature(bool shown);
    std::uint32_t GetMeasure() const { return measure; }

    /// Listeners are told in the order in which they were attached.
    void AttachListener(GraphListener& listener);
    void DetachListener(GraphListener& listener);

    /// The data set's current date.
    SYSTEMTIME GetCurrentDate() const;
    /// Makes it the data set's current date and brings it into view.
    void SetCurrentDate(const SYSTEMTIME& date);

    /// Asks for everything anew and repaints, after a recomputation or when another day has begun.
    void Refresh();
    /// The data set was replaced: its own scroll range, its current date, everything painted anew.
    void Reload();

    // What the data set tells. Every change is accepted.
    void DateChanged(UserData& changed, const SYSTEMTIME& old, const SYSTEMTIME& current) override;
    void TemperatureChanged(UserData& changed, std::int32_t value) override;
    void BleedingChanged(UserData& changed, std::int32_t value) override;

  private:
    // The chart's direct question. Its records come as WM_NOTIFY, and are not answered here again.
    LRESULT Notify(NMHDR& record) override;
    bool GetRange(NMHDR& record, int& minimum, int& maximum) override;

    LRESULT OnCreate();
    /// Creates the children and fills them. False when one cannot be made.
    bool Complete();
    bool IsComplete() const { return chart.Handle() != nullptr; }
    void OnDestroy();
    void OnPaint();
    void OnEraseBackground(HDC dc) const;
    void OnSize();
    void OnSpin(std::int32_t position);
    void OnCommand(UINT id, UINT notification);
    LRESULT OnFieldColor(HDC dc) const;
    /// Whether the notification is one of the view's; then `answer` holds its result.
    bool OnNotify(NMHDR& record, LRESULT& answer);
    bool OnChartNotify(NMHDR& record, LRESULT& answer);
    void OnHelp();
    void OnPickDate(const SYSTEMTIME& picked);
    void OnGetPoints(ChartPoints& request);
    /// Whether the point is refused.
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
    // Temperature until the settings are read, bleeding when they hold no choice: the two defaults
    // differ on purpose, the first survives only where no settings can be kept at all.
    GraphShowFlag mode = GraphShowTemperature;
    TemperatureMeasure measure = MeasureFahrenheit;
    LONG dayWidth = 10;
    GraphLayout layout{};
    Bitmap legend;
    std::vector<GraphListener*> listeners;
};

}  // namespace lunara
