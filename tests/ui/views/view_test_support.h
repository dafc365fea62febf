#pragma once

// What the tests of controls and views share: a notification sink made of a function, and the state
// of a device context.

#include <functional>
#include <utility>

#include "platform/clock.h"
#include "records/dates.h"
#include "tests/ui/ui_test.h"
#include "tests/ui/window_boxes.h"
#include "window/notification.h"

namespace lunara::test {

/// Whether any part of a visible window is invalid.
inline bool WaitsForPaint(HWND window) { return ::GetUpdateRect(window, nullptr, FALSE) != FALSE; }

/// A sink that answers with a function.
class ScriptedSink : public NotificationSink {
  public:
    explicit ScriptedSink(std::function<LRESULT(NMHDR&)> answer) : script(std::move(answer)) {}
    LRESULT Notify(NMHDR& record) override { return script(record); }

  private:
    std::function<LRESULT(NMHDR&)> script;
};

/// The objects and colours of a device context, to tell whether drawing restored them.
struct Selection {
    explicit Selection(HDC dc)
        : font(::GetCurrentObject(dc, OBJ_FONT)),
          brush(::GetCurrentObject(dc, OBJ_BRUSH)),
          pen(::GetCurrentObject(dc, OBJ_PEN)),
          backgroundMode(::GetBkMode(dc)),
          textColor(::GetTextColor(dc)),
          backgroundColor(::GetBkColor(dc)) {}
    bool operator==(const Selection&) const = default;

    HGDIOBJ font;
    HGDIOBJ brush;
    HGDIOBJ pen;
    int backgroundMode;
    COLORREF textColor;
    COLORREF backgroundColor;
};

}  // namespace lunara::test
