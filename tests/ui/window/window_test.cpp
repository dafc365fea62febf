// Window objects: creation, binding to a handle, subclassing, dispatch of messages.

#include "window/window.h"

#include "tests/ui/ui_test.h"
#include "window/window_map.h"

namespace lunara::test {
namespace {

constexpr UINT Ask = WM_APP + 10;
constexpr UINT AskInside = WM_APP + 11;

class Window : public UiTest {};

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC));
}

/// A system control with no object bound to it.
HWND MakeEdit() {
    return ::CreateWindowExW(0, TEXT("EDIT"), TEXT("typed"), WS_POPUP, 0, 0, 50, 20, nullptr,
                             nullptr, AppInstance(), nullptr);
}

TEST_F(Window, WithoutAClassNameItGetsTheFrameworksClass) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    EXPECT_EQ(ClassOf(window.Handle()), TEXT("wfcWnd_1_0"));
    EXPECT_EQ(ScriptedWindow::FromHandle(window.Handle()), &window);
}

TEST_F(Window, TheFrameworksClassHasOnlyTheRedrawAndDoubleClickStyles) {
    ASSERT_EQ(ScriptedWindow::RegisterFrameworkClass(), 1);
    ASSERT_EQ(ScriptedWindow::RegisterFrameworkClass(), 1);  // registered already
    WNDCLASSW found{};
    ASSERT_TRUE(::GetClassInfoW(AppInstance(), FrameworkClassName, &found));
    EXPECT_EQ(found.style, UINT{CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS});
    EXPECT_EQ(found.lpfnWndProc, &FrameworkWindowProc);
    EXPECT_EQ(found.hInstance, AppInstance());
    EXPECT_EQ(found.hbrBackground, nullptr);
    EXPECT_EQ(found.hCursor, nullptr);
    EXPECT_EQ(found.hIcon, nullptr);
    EXPECT_EQ(found.lpszMenuName, nullptr);
    EXPECT_EQ(found.cbWndExtra, 0);
}

TEST_F(Window, CreationParametersArriveUnchanged) {
    ScriptedWindow parent;
    ASSERT_EQ(parent.Make(), 1);
    ScriptedWindow window;
    int parameter = 0;
    CREATESTRUCTW seen{};
    std::wstring title;
    window.handler = [&](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        if (message == WM_CREATE) {
            seen = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
            title = seen.lpszName;
        }
        return false;
    };
    ASSERT_EQ(window.Create(WS_EX_NOPARENTNOTIFY, nullptr, TEXT("Title"), WS_CHILD, 3, 4, 50, 60,
                            parent.Handle(), reinterpret_cast<HMENU>(77), &parameter),
              1);
    EXPECT_EQ(seen.lpCreateParams, &parameter);
    EXPECT_EQ(seen.hInstance, AppInstance());
    EXPECT_EQ(seen.hMenu, reinterpret_cast<HMENU>(77));
    EXPECT_EQ(seen.hwndParent, parent.Handle());
    EXPECT_EQ(seen.x, 3);
    EXPECT_EQ(seen.y, 4);
    EXPECT_EQ(seen.cx, 50);
    EXPECT_EQ(seen.cy, 60);
    EXPECT_EQ(seen.style, WS_CHILD);
    EXPECT_EQ(seen.dwExStyle, static_cast<DWORD>(WS_EX_NOPARENTNOTIFY));
    EXPECT_EQ(title, TEXT("Title"));
    EXPECT_EQ(::GetDlgCtrlID(window.Handle()), 77);
}

TEST_F(Window, IsBoundBeforeItHandlesItsCreation) {
    ScriptedWindow window;
    HWND handleAtCreation = nullptr;
    window.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_CREATE) {
            handleAtCreation = window.Handle();
        }
        return false;
    };
    ASSERT_EQ(window.Make(), 1);
    EXPECT_NE(handleAtCreation, nullptr);
    EXPECT_EQ(handleAtCreation, window.Handle());
    EXPECT_EQ(window.log.front(), static_cast<UINT>(WM_CREATE));
}

class PickyWindow : public ScriptedWindow {
  public:
    int PreCreateWindow(CREATESTRUCTW& parameters) override {
        if (!allowed) {
            return 0;
        }
        parameters.cx = 33;
        return ScriptedWindow::PreCreateWindow(parameters);
    }
    bool allowed = true;
};

TEST_F(Window, PreCreateWindowMayChangeTheParameters) {
    PickyWindow window;
    ASSERT_EQ(window.Make(nullptr, 100, 80), 1);
    RECT bounds{};
    ::GetWindowRect(window.Handle(), &bounds);
    EXPECT_EQ(bounds.right - bounds.left, 33);
    EXPECT_EQ(bounds.bottom - bounds.top, 80);
}

TEST_F(Window, PreCreateWindowMayRefuse) {
    PickyWindow window;
    window.allowed = false;
    EXPECT_EQ(window.Make(), 0);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_TRUE(window.log.empty());
}

class OwnClassWindow : public ScriptedWindow {
  public:
    int PreCreateWindow(CREATESTRUCTW& parameters) override {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &FrameworkWindowProc;
        windowClass.hInstance = AppInstance();
        windowClass.lpszClassName = TEXT("LunaraTestClass");
        ::RegisterClassW(&windowClass);
        parameters.lpszClass = windowClass.lpszClassName;
        return ScriptedWindow::PreCreateWindow(parameters);
    }
};

TEST_F(Window, AClassSetByPreCreateWindowIsKept) {
    OwnClassWindow window;
    ASSERT_EQ(window.Make(), 1);
    EXPECT_EQ(ClassOf(window.Handle()), TEXT("LunaraTestClass"));
    EXPECT_EQ(window.CountOf(WM_CREATE), 1);
}

TEST_F(Window, AForeignClassFailsAndLeavesNoWindow) {
    ScriptedWindow window;
    EXPECT_EQ(window.Create(0, TEXT("STATIC"), TEXT("LunaraForeign"), WS_POPUP, 0, 0, 10, 10,
                            nullptr, nullptr),
              0);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(::FindWindowW(TEXT("STATIC"), TEXT("LunaraForeign")), nullptr);
    // Nor is the object still pending, to be bound to the next window of the framework's class.
    EXPECT_EQ(::CreateWindowExW(0, FrameworkClassName, TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr,
                                nullptr, AppInstance(), nullptr),
              nullptr);
}

TEST_F(Window, AnUnknownClassFails) {
    ScriptedWindow window;
    EXPECT_EQ(window.Create(0, TEXT("NoSuchLunaraClass"), TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr,
                            nullptr),
              0);
    EXPECT_EQ(window.Handle(), nullptr);
    ASSERT_EQ(window.Make(), 1);  // the failure leaves the object usable
}

TEST_F(Window, AWindowOfTheFrameworksClassCreatedElsewhereIsRefused) {
    ASSERT_EQ(ScriptedWindow::RegisterFrameworkClass(), 1);
    EXPECT_EQ(::CreateWindowExW(0, FrameworkClassName, TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr,
                                nullptr, AppInstance(), nullptr),
              nullptr);
    EXPECT_EQ(FrameworkWindowProc(nullptr, WM_CREATE, 0, 0), -1);
}

TEST_F(Window, RefusedCreationUnbindsAndTheObjectCanBeCreatedLater) {
    ScriptedWindow window;
    window.handler = [](UINT message, WPARAM, LPARAM, LRESULT& result) {
        result = -1;
        return message == WM_CREATE;
    };
    EXPECT_EQ(window.Make(), 0);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(WindowMap::Current(), nullptr);
    window.handler = nullptr;
    EXPECT_EQ(window.Make(), 1);
}

TEST_F(Window, ABoundObjectIsNotCreatedASecondTime) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    const HWND handle = window.Handle();
    EXPECT_EQ(window.Make(), 0);
    EXPECT_EQ(window.Handle(), handle);
    EXPECT_EQ(window.CountOf(WM_CREATE), 1);
}

TEST_F(Window, CreatingAChildWhileBeingCreatedBindsBoth) {
    ScriptedWindow parent;
    ScriptedWindow child;
    int childMade = 0;
    parent.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_CREATE) {
            childMade = child.Make(parent.Handle());
        }
        return false;
    };
    ASSERT_EQ(parent.Make(), 1);
    EXPECT_EQ(childMade, 1);
    EXPECT_EQ(::GetParent(child.Handle()), parent.Handle());
    EXPECT_EQ(ScriptedWindow::FromHandle(parent.Handle()), &parent);
    EXPECT_EQ(ScriptedWindow::FromHandle(child.Handle()), &child);
}

TEST_F(Window, HandlerStillSeesItsHandleInDestroyAndIsUnboundAfterwards) {
    ScriptedWindow window;
    HWND handleAtDestroy = nullptr;
    lunara::Window* boundAtDestroy = nullptr;
    window.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_DESTROY) {
            handleAtDestroy = window.Handle();
            boundAtDestroy = ScriptedWindow::FromHandle(handleAtDestroy);
        }
        return false;
    };
    ASSERT_EQ(window.Make(), 1);
    const HWND handle = window.Handle();
    ::DestroyWindow(handle);
    EXPECT_EQ(handleAtDestroy, handle);
    EXPECT_EQ(boundAtDestroy, &window);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(ScriptedWindow::FromHandle(handle), nullptr);
    EXPECT_EQ(window.CountOf(WM_NCDESTROY), 0);
}

TEST_F(Window, AnObjectMayDieInItsDestroyHandler) {
    auto* window = new ScriptedWindow;
    ASSERT_EQ(window->Make(), 1);
    const HWND handle = window->Handle();
    window->handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == WM_DESTROY) {
            window->Detach();
        }
        return false;
    };
    ::DestroyWindow(handle);
    EXPECT_EQ(WindowMap::Current(), nullptr);
    delete window;
}

TEST_F(Window, DestroyingTheObjectLeavesItsWindow) {
    HWND handle = nullptr;
    {
        lunara::Window window;
        ASSERT_EQ(window.Create(0, nullptr, TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr, nullptr), 1);
        handle = window.Handle();
    }
    EXPECT_TRUE(::IsWindow(handle));
    EXPECT_EQ(WindowMap::Current(), nullptr);
    ::DestroyWindow(handle);
}

TEST_F(Window, AttachBindsOneObjectOnly) {
    const HWND edit = MakeEdit();
    lunara::Window first;
    lunara::Window second;
    EXPECT_EQ(first.Attach(edit), 1);
    EXPECT_EQ(second.Attach(edit), 0);
    EXPECT_EQ(first.Attach(edit), 0);
    EXPECT_EQ(second.Handle(), nullptr);
    EXPECT_EQ(ScriptedWindow::FromHandle(edit), &first);
    ::DestroyWindow(edit);
    EXPECT_EQ(first.Detach(), edit);
}

TEST_F(Window, AttachRefusesNoWindowAndASecondWindow) {
    const HWND edit = MakeEdit();
    const HWND other = MakeEdit();
    lunara::Window window;
    EXPECT_EQ(window.Attach(nullptr), 0);
    EXPECT_EQ(WindowMap::Current(), nullptr);
    EXPECT_EQ(window.Attach(edit), 1);
    EXPECT_EQ(window.Attach(other), 0);
    EXPECT_EQ(window.Handle(), edit);
    window.Detach();
    ::DestroyWindow(edit);
    ::DestroyWindow(other);
}

TEST_F(Window, DetachOfAnUnboundObjectReturnsNull) {
    lunara::Window window;
    EXPECT_EQ(window.Detach(), nullptr);
}

TEST_F(Window, LastUnboundWindowDestroysTheMapAndTheNextMakesANewOne) {
    const HWND edit = MakeEdit();
    const HWND other = MakeEdit();
    lunara::Window first;
    lunara::Window second;
    ASSERT_EQ(WindowMap::Current(), nullptr);
    first.Attach(edit);
    second.Attach(other);
    EXPECT_EQ(WindowMap::Current()->Count(), 2);
    first.Detach();
    ASSERT_NE(WindowMap::Current(), nullptr);
    second.Detach();
    EXPECT_EQ(WindowMap::Current(), nullptr);
    EXPECT_EQ(ScriptedWindow::FromHandle(edit), nullptr);
    first.Attach(edit);
    ASSERT_NE(WindowMap::Current(), nullptr);
    EXPECT_EQ(WindowMap::Current()->Count(), 1);
    first.Detach();
    ::DestroyWindow(edit);
    ::DestroyWindow(other);
}

TEST_F(Window, SubclassRoutesMessagesAndFallsBackToTheControl) {
    const HWND edit = MakeEdit();
    const WNDPROC own = ProcedureOf(edit);
    ScriptedWindow window;
    ASSERT_EQ(window.Subclass(edit), 1);
    EXPECT_NE(ProcedureOf(edit), own);
    EXPECT_EQ(TextOf(edit), TEXT("typed"));  // the control's own answer
    EXPECT_GE(window.CountOf(WM_GETTEXT), 1);
    window.handler = [](UINT message, WPARAM, LPARAM, LRESULT& result) {
        result = 41;
        return message == EM_GETLIMITTEXT;
    };
    EXPECT_EQ(::SendMessageW(edit, EM_GETLIMITTEXT, 0, 0), 41);
    EXPECT_EQ(window.Detach(), edit);
    EXPECT_EQ(ProcedureOf(edit), own);
    EXPECT_NE(::SendMessageW(edit, EM_GETLIMITTEXT, 0, 0), 41);
    ::DestroyWindow(edit);
}

TEST_F(Window, SubclassOfABoundWindowLeavesItsProcedure) {
    const HWND edit = MakeEdit();
    lunara::Window first;
    lunara::Window second;
    ASSERT_EQ(first.Attach(edit), 1);
    const WNDPROC own = ProcedureOf(edit);
    EXPECT_EQ(second.Subclass(edit), 0);
    EXPECT_EQ(ProcedureOf(edit), own);
    first.Detach();
    ::DestroyWindow(edit);
}

TEST_F(Window, ADestroyedSubclassedWindowGetsItsProcedureBack) {
    const HWND button = ::CreateWindowExW(0, TEXT("BUTTON"), TEXT(""), WS_POPUP, 0, 0, 50, 20,
                                          nullptr, nullptr, AppInstance(), nullptr);
    ScriptedWindow window;
    ASSERT_EQ(window.Subclass(button), 1);
    ASSERT_NE(::SendMessageW(button, WM_GETDLGCODE, 0, 0), 0);
    ::DestroyWindow(button);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(window.CountOf(WM_DESTROY), 1);
    EXPECT_EQ(window.CountOf(WM_NCDESTROY), 0);
    ASSERT_EQ(window.Make(), 1);
    // The new window is not subclassed: the procedure of the button must not be kept for it.
    EXPECT_EQ(ProcedureOf(window.Handle()), &FrameworkWindowProc);
    EXPECT_EQ(::SendMessageW(window.Handle(), WM_GETDLGCODE, 0, 0), 0);
}

TEST_F(Window, HandledMessagesReturnTheHandlersResult) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    ASSERT_EQ(TextOf(window.Handle()), TEXT("Scripted"));  // not handled, so the system answers
    window.handler = [](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        result = static_cast<LRESULT>(wParam) * 10 + lParam;
        return message == Ask;
    };
    EXPECT_EQ(::SendMessageW(window.Handle(), Ask, 4, 2), 42);
}

TEST_F(Window, TheBaseClassHandlesNothingAndLeavesTheResultAlone) {
    lunara::Window window;
    LRESULT result = 7;
    EXPECT_FALSE(window.OnMessage(WM_PAINT, 0, 0, &result));
    EXPECT_FALSE(window.OnMessage(WM_PAINT, 0, 0, nullptr));
    EXPECT_EQ(result, 7);
}

TEST_F(Window, NestedDispatchKeepsTheOuterMessage) {
    ScriptedWindow window;
    ScriptedWindow other;
    CurrentMessage outer{};
    CurrentMessage inner{};
    window.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == Ask) {
            ::SendMessageW(other.Handle(), AskInside, 3, 4);
            outer = GetCurrentMessage();
        }
        return message == Ask;
    };
    other.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message == AskInside) {
            inner = GetCurrentMessage();
        }
        return message == AskInside;
    };
    ASSERT_EQ(window.Make(), 1);
    ASSERT_EQ(other.Make(), 1);
    const CurrentMessage before = GetCurrentMessage();
    ::SendMessageW(window.Handle(), Ask, 1, 2);
    EXPECT_EQ(inner.window, other.Handle());
    EXPECT_EQ(inner.message, AskInside);
    EXPECT_EQ(inner.wParam, 3U);
    EXPECT_EQ(inner.lParam, 4);
    EXPECT_EQ(outer.window, window.Handle());
    EXPECT_EQ(outer.message, Ask);
    EXPECT_EQ(outer.wParam, 1U);
    EXPECT_EQ(outer.lParam, 2);
    EXPECT_EQ(GetCurrentMessage().message, before.message);
    EXPECT_EQ(GetCurrentMessage().window, before.window);
}

TEST_F(Window, DefaultPassesTheCurrentMessageOn) {
    ScriptedWindow window;
    window.handler = [&](UINT message, WPARAM, LPARAM, LRESULT& result) {
        if (message == WM_GETTEXTLENGTH) {
            ::SendMessageW(window.Handle(), Ask, 0, 0);
            result = window.Default() + 100;
            return true;
        }
        return false;
    };
    ASSERT_EQ(window.Make(), 1);
    // "Scripted" has 8 units.
    EXPECT_EQ(::SendMessageW(window.Handle(), WM_GETTEXTLENGTH, 0, 0), 108);
}

TEST_F(Window, InvalidateCoversTheClientAreaAndUpdatePaintsAtOnce) {
    ScriptedWindow window;
    RECT painted{};
    bool erased = false;
    window.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_PAINT) {
            return false;
        }
        const PaintScope scope(window.Handle());
        painted = scope.Paint().rcPaint;
        return true;
    };
    ASSERT_EQ(window.Make(nullptr, 60, 40), 1);
    ::ShowWindow(window.Handle(), SW_SHOWNOACTIVATE);
    window.Update();
    for (const bool erase : {false, true}) {
        window.log.clear();
        painted = RECT{};
        window.Invalidate(erase);
        EXPECT_EQ(window.CountOf(WM_PAINT), 0);
        window.Update();
        EXPECT_EQ(window.CountOf(WM_PAINT), 1);
        erased = window.CountOf(WM_ERASEBKGND) > 0;
        EXPECT_EQ(erased, erase);
        EXPECT_EQ(painted.right - painted.left, 60);
        EXPECT_EQ(painted.bottom - painted.top, 40);
    }
}

TEST_F(Window, ABorderIsDrawnAroundTheClientArea) {
    ScriptedWindow parent;
    ASSERT_EQ(parent.Make(nullptr, 60, 40), 1);
    ScriptedWindow framed;
    ASSERT_EQ(framed.Create(0, nullptr, TEXT(""), WS_CHILD | WS_VISIBLE | WS_BORDER, 5, 5, 30, 20,
                            parent.Handle(), nullptr),
              1);
    ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    framed.Update();
    const HDC dc = ::GetWindowDC(framed.Handle());
    EXPECT_EQ(::GetPixel(dc, 0, 0), ::GetSysColor(COLOR_WINDOWFRAME));
    EXPECT_EQ(::GetPixel(dc, 29, 10), ::GetSysColor(COLOR_WINDOWFRAME));
    ::ReleaseDC(framed.Handle(), dc);
}

TEST_F(Window, ThePointerOverAWindowIsAnArrow) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
    ::SendMessageW(window.Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(window.Handle()),
                   MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
}

TEST_F(Window, ThePointerOverAChildIsTheChildsOwn) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    const HWND edit = ::CreateWindowExW(0, TEXT("EDIT"), TEXT(""), WS_CHILD, 0, 0, 50, 20,
                                        window.Handle(), nullptr, AppInstance(), nullptr);
    ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
    ::SendMessageW(edit, WM_SETCURSOR, reinterpret_cast<WPARAM>(edit),
                   MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_IBEAM));
}

TEST_F(Window, TheMainWindowIsForgottenWithItsObject) {
    EXPECT_EQ(MainWindowHandle(), nullptr);
    {
        ScriptedWindow window;
        SetMainWindow(&window);
        EXPECT_EQ(GetMainWindow(), &window);
        EXPECT_EQ(MainWindowHandle(), nullptr);  // not created yet
        ASSERT_EQ(window.Make(), 1);
        EXPECT_EQ(MainWindowHandle(), window.Handle());
    }
    EXPECT_EQ(GetMainWindow(), nullptr);
}

}  // namespace
}  // namespace lunara::test
