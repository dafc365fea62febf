#include "window/window.h"

#include "platform/subclass.h"
#include "window/data_exchange.h"
#include "window/window_map.h"

namespace lunara {
namespace {

CurrentMessage currentMessage{};
Window* pendingWindow = nullptr;  // set by Create, taken at WM_CREATE

/// Calls the object's WindowProc with `currentMessage` set to the message, and restores the outer
/// message afterwards: a handler that sends a message re-enters this function.
LRESULT Dispatch(Window& object, const CurrentMessage& message) {
    const CurrentMessage outer = currentMessage;
    currentMessage = message;
    const LRESULT result = object.WindowProc(message.message, message.wParam, message.lParam);
    currentMessage = outer;
    return result;
}

/// Registers window class `name` with FrameworkWindowProc unless a class of that name exists. False
/// when that fails.
bool EnsureClass(const WCHAR* name) {
    WNDCLASSW windowClass{};
    if (::GetClassInfoW(AppInstance(), name, &windowClass) != FALSE) {
        return true;
    }
    windowClass = {};
    windowClass.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
    windowClass.lpfnWndProc = &FrameworkWindowProc;
    windowClass.hInstance = AppInstance();
    windowClass.lpszClassName = name;
    return ::RegisterClassW(&windowClass) != 0;
}

/// Whether the window has a non-client area.
bool HasFrame(HWND window) {
    RECT whole{};
    RECT client{};
    ::GetWindowRect(window, &whole);
    ::GetClientRect(window, &client);
    return whole.right - whole.left != client.right || whole.bottom - whole.top != client.bottom;
}

}  // namespace

const CurrentMessage& GetCurrentMessage() { return currentMessage; }

LRESULT CALLBACK FrameworkWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        if (pendingWindow == nullptr) {
            return -1;
        }
        pendingWindow->Attach(window);
        pendingWindow = nullptr;
    }
    Window* object = Window::FromHandle(window);
    if (object == nullptr) {
        // No object is bound: before WM_CREATE, after WM_DESTROY, or in a subclassed window whose
        // object is gone. The window's own or the system's default procedure takes the message.
        return CallPrevious(&FrameworkWindowProc, window, message, wParam, lParam);
    }
    const LRESULT result = Dispatch(*object, CurrentMessage{window, message, wParam, lParam});
    if (message == WM_DESTROY) {
        // Look the object up again: the handler may have unbound or deleted it.
        object = Window::FromHandle(window);
        if (object != nullptr) {
            object->Detach();
        }
    }
    return result;
}

int UseWindowClass(CREATESTRUCTW& parameters, const WCHAR* className) {
    if (parameters.lpszClass != nullptr) {
        return 1;
    }
    parameters.lpszClass = className;
    return EnsureClass(className) ? 1 : 0;
}

Window::~Window() { Detach(); }

LRESULT Window::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnMessage(message, wParam, lParam, &result)) {
        return result;
    }
    return DefaultProc(message, wParam, lParam);
}

LRESULT Window::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (previousProcedure != nullptr) {
        return CallPrevious(&FrameworkWindowProc, handle, message, wParam, lParam);
    }
    // The framework's class has no cursor, because the device has no mouse; on a desktop the
    // pointer would keep the shape it had outside the window. A child passes WM_SETCURSOR to its
    // parent first, so wParam tells whether the pointer is over this very window.
    if (message == WM_SETCURSOR && reinterpret_cast<HWND>(wParam) == handle &&
        LOWORD(lParam) == HTCLIENT) {
        ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
        return TRUE;
    }
    if (message == WM_NCPAINT && !HasFrame(handle)) {
        // Wine's default procedure would create a device context for the frame that is not there,
        // which takes longer than painting the window.
        return 0;
    }
    return ::DefWindowProcW(handle, message, wParam, lParam);
}

bool Window::OnMessage(UINT, WPARAM, LPARAM, LRESULT*) { return false; }

int Window::PreCreateWindow(CREATESTRUCTW& parameters) {
    return UseWindowClass(parameters, FrameworkClassName);
}

void Window::DoDataExchange(DataExchange&) {}

int Window::Attach(HWND window) {
    if (window == nullptr || handle != nullptr) {
        return 0;
    }
    WindowMap& map = WindowMap::Ensure();
    if (map.Lookup(window) >= 0) {
        return 0;
    }
    handle = window;
    map.Insert(window, this);
    return 1;
}

int Window::Subclass(HWND window) {
    if (Attach(window) == 0) {
        return 0;
    }
    previousProcedure = AddSubclass(window, &FrameworkWindowProc);
    return 1;
}

HWND Window::Detach() {
    if (handle == nullptr) {
        return nullptr;
    }
    if (previousProcedure != nullptr) {
        RemoveSubclass(handle, &FrameworkWindowProc);
        previousProcedure = nullptr;
    }
    if (WindowMap* map = WindowMap::Current(); map != nullptr) {
        map->Remove(handle);
        WindowMap::DestroyIfEmpty();
    }
    const HWND window = handle;
    handle = nullptr;
    return window;
}

Window* Window::FromHandle(HWND window) {
    WindowMap* map = WindowMap::Current();
    return map == nullptr ? nullptr : map->Find(window);
}

int Window::Create(DWORD exStyle, const WCHAR* className, const WCHAR* title, DWORD style, int x,
                   int y, int width, int height, HWND parent, HMENU menuOrId, void* parameter) {
    if (handle != nullptr) {
        return 0;
    }
    CREATESTRUCTW creation{};
    creation.lpCreateParams = parameter;
    creation.hInstance = AppInstance();
    creation.hMenu = menuOrId;
    creation.hwndParent = parent;
    creation.cx = width;
    creation.cy = height;
    creation.x = x;
    creation.y = y;
    creation.style = static_cast<LONG>(style);
    creation.lpszName = title;
    creation.lpszClass = className;
    creation.dwExStyle = exStyle;
    if (PreCreateWindow(creation) == 0) {
        return 0;
    }
    pendingWindow = this;
    const HWND created = ::CreateWindowExW(
        creation.dwExStyle, creation.lpszClass, creation.lpszName,
        static_cast<DWORD>(creation.style), creation.x, creation.y, creation.cx, creation.cy,
        creation.hwndParent, creation.hMenu, creation.hInstance, creation.lpCreateParams);
    const bool taken = pendingWindow == nullptr;
    pendingWindow = nullptr;
    if (created == nullptr) {
        // WM_CREATE was refused after the object was bound. Windows sends WM_DESTROY then, which
        // unbinds it; Wine does not.
        Detach();
        return 0;
    }
    if (!taken) {
        // The class has another window procedure, which never bound the object.
        ::DestroyWindow(created);
        return 0;
    }
    return 1;
}

int Window::RegisterFrameworkClass() { return EnsureClass(FrameworkClassName) ? 1 : 0; }

int Window::UpdateData(bool save) {
    DataExchange exchange(save, *this);
    DoDataExchange(exchange);
    return 1;
}

void Window::Invalidate(bool erase) {
    if (::IsWindowVisible(handle) == FALSE) {
        return;  // showing it will paint all of it
    }
    RECT client{};
    ::GetClientRect(handle, &client);
    ::InvalidateRect(handle, &client, erase ? TRUE : FALSE);
}

void Window::Update() { ::UpdateWindow(handle); }

LRESULT Window::Default() {
    return DefaultProc(currentMessage.message, currentMessage.wParam, currentMessage.lParam);
}

}  // namespace lunara
