#include "views/graph_view.h"

#include <algorithm>
#include <array>

#include "frame/gdi.h"
#include "frame/help.h"
#include "frame/settings.h"
#include "platform/clock.h"

namespace lunara {
namespace {

constexpr WCHAR ShowFlagsValue[] = TEXT("GraphView_ShowFlags");
constexpr WCHAR MeasureValue[] = TEXT("TemperatureMeasure");
constexpr WCHAR HelpAnchor[] = TEXT("Lunara.htm#_Calendar_graph");
constexpr int TitleCapacity = 64;

}  // namespace

GraphView::GraphView(UserData& userData) : data(userData), currentDate(LocalNow()) {}

void GraphView::DateChanged(UserData& /*changed*/, const SYSTEMTIME& /*old*/,
                            const SYSTEMTIME& current) {
    currentDate = current;
}

void GraphView::SetShowBleeding(bool shown) {
    if (!shown || mode == GraphShowBleeding) {
        return;
    }
    mode = GraphShowBleeding;
    Invalidate(true);
    for (GraphListener* listener : listeners) {
        listener->BleedingGraphSelected();
    }
}

void GraphView::SetShowTemperature(bool shown) {
    if (!shown || mode == GraphShowTemperature) {
        return;
    }
    mode = GraphShowTemperature;
    Invalidate(true);
    for (GraphListener* listener : listeners) {
        listener->TemperatureGraphSelected();
    }
}

void GraphView::AttachListener(GraphListener& listener) { listeners.push_back(&listener); }

void GraphView::DetachListener(GraphListener& listener) { std::erase(listeners, &listener); }

void GraphView::SetCurrentDate(const SYSTEMTIME& date) {
    currentDate = date;
    data.SetCurrentDate(date);
}

void GraphView::Refresh() { Invalidate(true); }

void GraphView::Reload() {
    data.GetCurrentDate(currentDate);
    Invalidate(true);
}

void GraphView::ReadSettings() {
    const Settings settings;
    if (!settings.IsOpen()) {
        return;
    }
    DWORD value = GraphShowBleeding;
    settings.ReadDword(ShowFlagsValue, value);
    mode = value == GraphShowTemperature ? GraphShowTemperature : GraphShowBleeding;
    value = MeasureFahrenheit;
    settings.ReadDword(MeasureValue, value);
    measure = value == MeasureCelsius ? MeasureCelsius : MeasureFahrenheit;
}

void GraphView::OnCreate() {
    ReadSettings();
    data.AttachObserver(*this);
    data.GetCurrentDate(currentDate);
}

void GraphView::OnDestroy() {
    Settings settings;
    settings.WriteDword(MeasureValue, measure);
    settings.WriteDword(ShowFlagsValue, mode);
    data.DetachObserver(*this);
}

void GraphView::OnPaint() {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    std::array<WCHAR, TitleCapacity> title{};
    ::GetWindowTextW(Handle(), title.data(), TitleCapacity);
    const BackgroundModeScope transparent(paint.Dc(), TRANSPARENT);
    ::DrawTextW(paint.Dc(), title.data(), -1, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void GraphView::OnEraseBackground(HDC dc) {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
}

bool GraphView::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/, LRESULT* result) {
    LRESULT answer = 0;
    switch (message) {
        case WM_CREATE:
            OnCreate();
            break;
        case WM_DESTROY:
            OnDestroy();
            break;
        case WM_PAINT:
            OnPaint();
            break;
        case WM_ERASEBKGND:
            OnEraseBackground(reinterpret_cast<HDC>(wParam));
            answer = 1;
            break;
        case WM_HELP:
            StartHelp(HelpAnchor);
            break;
        default:
            return false;
    }
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
