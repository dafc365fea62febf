#pragma once

// A small push button with a check state, drawn by itself. It does not change its state when
// tapped: its owner hears of the tap and sets the states of all buttons that belong together.

#include "platform/gdi.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR ToggleButtonClassName[] = TEXT("ToggleButton");

/// Delivers a control's record to its parent as WM_COMMAND, as the system's buttons do.
class CommandSink : public NotificationSink {
  public:
    LRESULT Notify(NMHDR& record) override;
};

enum class ToggleLook {
    Bevelled,  // raised or sunken, on a brown ground
    Flat,      // black on white, or white on black when checked
};

/// Answers BM_SETCHECK (0 and 1 as given, any other value becomes 2) and BM_GETCHECK. A tap gives
/// every sink a record with the code BN_CLICKED; the first sink tells the parent by WM_COMMAND.
class ToggleButton : public NotifyingControl {
  public:
    static constexpr int TextCapacity = 32;  // the text is cut to 31 characters

    explicit ToggleButton(ToggleLook wantedLook);

    /// Paints ground and face as they would look in a client area `client`, with the device
    /// context's font and pen.
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
