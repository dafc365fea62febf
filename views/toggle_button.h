#pragma once

// A small custom-drawn push button with a check state. A tap does not change the state: the button
// reports it, and its owner sets the states of all buttons that belong together.

#include "platform/gdi.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR ToggleButtonClassName[] = TEXT("ToggleButton");

/// Sends a control's notification to its parent as WM_COMMAND, like the system's buttons.
class CommandSink : public NotificationSink {
  public:
    LRESULT Notify(NMHDR& record) override;
};

enum class ToggleLook {
    Bevelled,  // raised, or sunken when checked, on a brown ground
    Flat,      // black on white, or white on black when checked
};

/// Answers BM_GETCHECK and BM_SETCHECK (0 and 1 are taken as they are, any other value becomes 2,
/// BST_INDETERMINATE). A tap notifies every sink with the code BN_CLICKED; the first sink passes it
/// to the parent as WM_COMMAND.
class ToggleButton : public NotifyingControl {
  public:
    /// UTF-16 units of the button's text, terminator included; a longer text is cut off.
    static constexpr int TextCapacity = 32;

    explicit ToggleButton(ToggleLook wantedLook);

    /// Paints ground and face, laid out for a client area `client`, with the device context's font
    /// and pen.
    void Draw(HDC dc, const RECT& client) const;

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool IsChecked() const { return state == BST_CHECKED; }
    void DrawGround(HDC dc, const RECT& client) const;
    void DrawFace(HDC dc, const RECT& client) const;
    void DrawBevelled(HDC dc, const RECT& client) const;
    void DrawFlat(HDC dc, const RECT& client) const;
    void DrawLabel(HDC dc, RECT place) const;

    void OnPaint() const;
    void OnEraseBackground(HDC dc) const;
    void OnLButtonUp();
    void OnSetCheck(WPARAM wanted);

    ToggleLook look;
    int state = BST_UNCHECKED;
    CommandSink commandSink;
};

}  // namespace lunara
