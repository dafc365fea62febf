#pragma once

// The base class of every window object. It binds one object to one window handle and routes that
// window's messages to the object's virtual functions. Single-threaded: the handle map, the current
// message and the object being created belong to the one thread that owns the message queue.

#include "platform/process.h"
#include "platform/win32.h"

namespace lunara {

class DataExchange;

// Private messages between a modeless dialog and the message loop that runs it (`RunDialog`).
// NOLINTBEGIN(readability-identifier-naming): spelt like the system's own messages.
/// Posted by a dialog to its own window when the user accepts the values (OK, "Add"). wParam and
/// lParam: 0. No result: the message loop takes it out of the queue and does not dispatch it.
inline constexpr UINT WM_DIALOG_OK = 0x8001;
/// Posted by a dialog to its own window when the user cancels or closes it. wParam and lParam: 0.
/// No result: the message loop takes it out of the queue and does not dispatch it.
inline constexpr UINT WM_DIALOG_CANCEL = 0x8002;
// NOLINTEND(readability-identifier-naming)

/// Window class of the main window and of every window that is created without naming a class. A
/// second instance of the program finds the first one by it.
inline constexpr WCHAR FrameworkClassName[] = TEXT("wfcWnd_1_0");

/// The message being dispatched. It is saved and restored around nested dispatch, when a handler
/// sends a message.
struct CurrentMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
const CurrentMessage& GetCurrentMessage();

/// The window procedure of the framework's class and of every window that `Window::Subclass` took.
LRESULT CALLBACK FrameworkWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Sets the window class of `parameters` to `className` unless they name one already, and registers
/// it on first use, with the framework's procedure and styles. Returns 1, or 0 when it cannot be
/// registered: the result of a control's `PreCreateWindow`.
int UseWindowClass(CREATESTRUCTW& parameters, const WCHAR* className);

/// A window object. It does not own its window: the window can outlive the object and the other way
/// round.
class Window {
  public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    /// Detaches from the window, which is not destroyed.
    virtual ~Window();

    /// Passes the message to `OnMessage`, and to `DefaultProc` when that does not handle it.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Passes the message to the subclassed window's previous procedure, or else to the system's
    /// default procedure.
    virtual LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// Handles the message and returns true, with its result in `*result` (`result` may be null).
    /// Returns false for a message that it does not handle, as the base always does.
    virtual bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// Called by `Create` before the window exists; may change the creation parameters. Returns 1,
    /// or 0 to refuse the creation. The base sets the framework's class if none is named.
    virtual int PreCreateWindow(CREATESTRUCTW& parameters);
    /// Lists the fields to exchange with controls, for `UpdateData`. The base lists none.
    virtual void DoDataExchange(DataExchange& exchange);

    /// Binds this object to `window` and leaves the window's procedure as it is. Returns 1; 0 when
    /// `window` is null or bound to an object, or when this object is bound already.
    int Attach(HWND window);
    /// Attaches to `window` and subclasses it, so that its messages come to this object first.
    /// Returns 1, or 0 when `Attach` failed.
    int Subclass(HWND window);
    /// Undoes `Attach` and `Subclass`. Returns the window, or null when none was bound.
    HWND Detach();
    /// The object bound to `window`; null when there is none.
    static Window* FromHandle(HWND window);

    /// Creates a window and binds this object to it at the start of WM_CREATE. A null `className`
    /// means the framework's class. Returns 1; 0 when the object is bound already, when
    /// `PreCreateWindow`, the system or the WM_CREATE handler refuses, or when the class has
    /// another procedure than `FrameworkWindowProc`. On failure no new window is left, and an
    /// object that was unbound can be created again.
    int Create(DWORD exStyle, const WCHAR* className, const WCHAR* title, DWORD style, int x, int y,
               int width, int height, HWND parent, HMENU menuOrId, void* parameter = nullptr);
    /// Registers the framework's class unless that is done. Returns 1, or 0 on failure.
    static int RegisterFrameworkClass();

    /// Runs `DoDataExchange`: from controls to fields if `save`, else from fields to controls.
    /// Always returns 1.
    int UpdateData(bool save);

    /// Marks the client area for repainting; does nothing while the window is hidden.
    void Invalidate(bool erase);
    /// Sends WM_PAINT at once if any area is marked for repainting.
    void Update();
    /// Passes the message being dispatched to `DefaultProc`, for a handler that needs the default
    /// result.
    LRESULT Default();

    HWND Handle() const { return handle; }

  private:
    HWND handle = nullptr;
    WNDPROC previousProcedure = nullptr;  // set while the window is subclassed
};

}  // namespace lunara
