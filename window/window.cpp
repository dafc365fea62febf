#include "window/window.h"

#include "platform/subclass.h"
#include "window/data_exchange.h"
#include "window/window_map.h"

namespace lunara {
namespace {

CurrentMessage currentMessage{};
Window* pendingWindow = nullptr;  // set by Create, taken at WM_CREATE

/// Hands the message to the object, while `currentMessage` says which one it is. A handler that
/// sends a message comes back here, so the outer message is put aside meanwhile.
LRESULT Dispatch(Window& object, const CurrentMessage& message) {
    const CurrentMessage outer = currentMessage;
    currentMessage = message;
    const LRESULT result = object.WindowProc(message.message, message.wParam, message.lParam);
    currentMessage = outer;
    return result;
}

/// Whether a class of that name exists; one of ours is registered when there is none.
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

/// Whether there is anything of the window around its client area.
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
        // Also for a subclassed window whose object is gone: its own procedure then.
        return CallPrevious(&FrameworkWindowProc, window, message, wParam, lParam);
    }
    const LRESULT result = Dispatch(*object, CurrentMessage{window, message, wParam, lParam});
    if (message == WM_DESTROY) {
        // Looked up again, because the handler may have unbound or deleted the object.
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
    // The framework's class has no cursor, as a device without a mouse needs none. On a desktop the
    // pointer would keep the shape it had outside. Children ask their parent first, hence the test
    // that the pointer is over this very window.
    if (message == WM_SETCURSOR && reinterpret_cast<HWND>(wParam) == handle &&
        LOWORD(lParam) == HTCLIENT) {
        ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
        return TRUE;
    }
    if (message == WM_NCPAINT && !HasFrame(handle)) {
        return 0;  // Wine would make a device context for it, which takes longer than painting
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
        // A window that refuses WM_CREATE gets its WM_DESTROY on Windows, but not under Wine.
        Detach();
        return 0;
    }
    if (!taken) {
        // A class that is not the framework's: nobody would ever own this window.
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
        return;  // it will be drawn wholly when it is shown
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
