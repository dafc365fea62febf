#pragma once

// The base of every window object: binds one object to one window handle and routes each message of
// that window to the object's virtual handlers. Single-threaded: the handle table, the current
// message and the pending object belong to the one thread that owns the message queue.

#include "platform/app_instance.h"
#include "platform/win32.h"

namespace lunara {

class DataExchange;

/// Message numbers with which a modeless dialog that has a loop of its own tells its owner.
// NOLINTBEGIN(readability-identifier-naming): spelt like the system's own messages.
inline constexpr UINT WM_DIALOG_OK = 0x8001;
inline constexpr UINT WM_DIALOG_CANCEL = 0x8002;
// NOLINTEND(readability-identifier-naming)

/// The class of all windows that the framework creates itself; a second instance of the program
/// finds the first one by it.
inline constexpr WCHAR FrameworkClassName[] = TEXT("wfcWnd_1_0");

/// The message being dispatched. Nested dispatch (a handler that sends a message) leaves the outer
/// one intact. Offered to handlers that need the message they run in; the program itself reads it
/// nowhere.
struct CurrentMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
const CurrentMessage& GetCurrentMessage();

class Window;

/// The one top-level window object of the program, which dialogs without a parent get as owner;
/// null before it is set and after it is gone.
void SetMainWindow(Window* window);
/// The counterpart of `SetMainWindow`; the program itself asks for the handle only.
Window* GetMainWindow();
/// Its handle; null when there is none.
HWND MainWindowHandle();

/// The window procedure of the framework's class and of every subclassed window.
LRESULT CALLBACK FrameworkWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Gives a window that is about to be created this class, unless its creator named another one. The
/// class is registered on first use and is the framework's in all but its name. For controls'
/// `PreCreateWindow`, with its result.
int UseWindowClass(CREATESTRUCTW& parameters, const WCHAR* className);

class Window {
  public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    /// A window that is still bound is unbound, not destroyed.
    virtual ~Window();

    /// `OnMessage`, and `DefaultProc` when that does not handle the message.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// The subclassed window's own procedure, or the system's default.
    virtual LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Whether the message was handled; then its result is in `result` (unless that is null).
    virtual bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// May change the creation parameters; the base fills in the framework's class when there is no
    /// class. 0 refuses the creation.
    virtual int PreCreateWindow(CREATESTRUCTW& parameters);
    /// Moves values between the object's fields and its controls; the base does nothing.
    virtual void DoDataExchange(DataExchange& exchange);

    /// Binds the object to the window; 0 when an object is bound to that window already, when this
    /// object is bound to another one, or when there is no window.
    int Attach(HWND window);
    /// `Attach`, then routes the window's messages here. 0 when `Attach` failed.
    int Subclass(HWND window);
    /// Undoes both; returns the window it was bound to, null when none.
    HWND Detach();
    /// The object bound to the window; null when there is none.
    static Window* FromHandle(HWND window);

    /// Creates a window and binds it while it handles WM_CREATE. A null class name means the
    /// framework's class. 1, or 0 when `PreCreateWindow`, the system or WM_CREATE refused, or when
    /// the class is not handled by `FrameworkWindowProc`, or when the object is bound already; then
    /// no new window is left, and an unbound object may be created again.
    int Create(DWORD exStyle, const WCHAR* className, const WCHAR* title, DWORD style, int x, int y,
               int width, int height, HWND parent, HMENU menuOrId, void* parameter = nullptr);
    /// Whether the framework's class exists; it is registered on first use.
    static int RegisterFrameworkClass();

    /// Runs `DoDataExchange`: controls to fields when `save`, else fields to controls. Returns 1.
    int UpdateData(bool save);

    void Invalidate(bool erase);
    void Update();
    /// `DefaultProc` for the current message.
    LRESULT Default();

    HWND Handle() const { return handle; }

  private:
    HWND handle = nullptr;
    WNDPROC previousProcedure = nullptr;
};

}  // namespace lunara
