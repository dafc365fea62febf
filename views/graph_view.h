#pragma once

// The graph view: the second view of the main window. It keeps its choice of graph and unit; the
// graph itself is not drawn yet.

#include <cstdint>
#include <vector>

#include "frame/window.h"
#include "records/user_data.h"

namespace lunara {

/// The graph that is shown; the two exclude each other.
enum GraphShowFlag : std::uint32_t {
    GraphShowBleeding = 1,
    GraphShowTemperature = 2,
};

enum TemperatureMeasure : std::uint32_t {
    MeasureFahrenheit = 0,
    MeasureCelsius = 1,
};

/// Is told when the graph view changes over.
class GraphListener {
  public:
    GraphListener() = default;
    GraphListener(const GraphListener&) = delete;
    GraphListener& operator=(const GraphListener&) = delete;
    virtual ~GraphListener() = default;

    virtual void BleedingGraphSelected() = 0;
    virtual void TemperatureGraphSelected() = 0;
};

class GraphView : public Window, public DataObserver {
  public:
    /// The data set must outlive the view.
    explicit GraphView(UserData& userData);

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void DateChanged(UserData& changed, const SYSTEMTIME& old, const SYSTEMTIME& current) override;

    std::uint32_t GetShowFlags() const { return mode; }
    /// Change over to that graph. With false, or for the graph that is shown already, nothing
    /// happens.
    void SetShowBleeding(bool shown);
    void SetShowTemperature(bool shown);
    std::uint32_t GetMeasure() const { return measure; }

    /// Listeners are told in the order in which they were attached.
    void AttachListener(GraphListener& listener);
    void DetachListener(GraphListener& listener);

    SYSTEMTIME GetCurrentDate() const { return currentDate; }
    void SetCurrentDate(const SYSTEMTIME& date);

    /// Repaints after a new prediction.
    void Refresh();
    /// Begins anew after the data set was replaced.
    void Reload();

  private:
    void OnCreate();
    void OnDestroy();
    void OnPaint();
    void OnEraseBackground(HDC dc);
    void ReadSettings();

    UserData& data;
    // Temperature until the settings are read, bleeding when they hold no choice: the two defaults
    // differ on purpose, the first survives only where no settings can be kept at all.
    std::uint32_t mode = GraphShowTemperature;
    std::uint32_t measure = MeasureFahrenheit;
    SYSTEMTIME currentDate;
    std::vector<GraphListener*> listeners;
};

}  // namespace lunara
