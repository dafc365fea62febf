#include "platform/subclass.h"

#include <string>
#include <vector>

#include "tests/ui/ui_test.h"
#include "window/dialog.h"

namespace lunara::test {
namespace {

std::string passed;  // a letter for each procedure that saw WM_APP

template <char Letter>
LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) {
        passed += Letter;
    }
    return CallPrevious(&Proc<Letter>, window, message, wParam, lParam);
}

WNDPROC CurrentProcedure(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC));
}

class Subclass : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(window.Make(), 1);
        own = CurrentProcedure(window.Handle());
    }
    std::string Passed() {
        passed.clear();
        ::SendMessageW(window.Handle(), WM_APP, 0, 0);
        return passed;
    }

    ScriptedWindow window;
    WNDPROC own = nullptr;
};

TEST_F(Subclass, TheLastAddedProcedureGetsMessagesFirst) {
    EXPECT_EQ(AddSubclass(window.Handle(), &Proc<'a'>), own);
    EXPECT_EQ(AddSubclass(window.Handle(), &Proc<'b'>), &Proc<'a'>);
    EXPECT_EQ(Passed(), "ba");
    EXPECT_EQ(window.CountOf(WM_APP), 1) << "and the window's own procedure last";
    RemoveSubclass(window.Handle(), &Proc<'b'>);
    RemoveSubclass(window.Handle(), &Proc<'a'>);
    EXPECT_EQ(CurrentProcedure(window.Handle()), own);
}

TEST_F(Subclass, ProceduresAreRemovedInAnyOrder) {
    AddSubclass(window.Handle(), &Proc<'a'>);
    AddSubclass(window.Handle(), &Proc<'b'>);
    AddSubclass(window.Handle(), &Proc<'c'>);
    RemoveSubclass(window.Handle(), &Proc<'b'>);
    EXPECT_EQ(Passed(), "ca");
    RemoveSubclass(window.Handle(), &Proc<'a'>);
    EXPECT_EQ(Passed(), "c");
    RemoveSubclass(window.Handle(), &Proc<'c'>);
    EXPECT_EQ(Passed(), "");
    EXPECT_EQ(CurrentProcedure(window.Handle()), own);
}

TEST_F(Subclass, TheSameProcedureIsAddedOnce) {
    AddSubclass(window.Handle(), &Proc<'a'>);
    EXPECT_EQ(AddSubclass(window.Handle(), &Proc<'a'>), nullptr);
    EXPECT_EQ(Passed(), "a");
    RemoveSubclass(window.Handle(), &Proc<'a'>);
    RemoveSubclass(window.Handle(), &Proc<'a'>);  // does nothing
    EXPECT_EQ(Passed(), "");
}

TEST_F(Subclass, WhatIsNoWindowIsRefused) { EXPECT_EQ(AddSubclass(nullptr, &Proc<'a'>), nullptr); }

TEST_F(Subclass, AForeignProcedureAboveKeepsMessagesComing) {
    const std::size_t before = SubclassCount();
    AddSubclass(window.Handle(), &Proc<'a'>);
    // Put in place the way another library does it, without this list.
    static WNDPROC below = nullptr;
    below = CurrentProcedure(window.Handle());
    const WNDPROC foreign = [](HWND target, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        return ::CallWindowProcW(below, target, message, wParam, lParam);
    };
    ::SetWindowLongPtrW(window.Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(foreign));
    RemoveSubclass(window.Handle(), &Proc<'a'>);
    EXPECT_EQ(CurrentProcedure(window.Handle()), foreign);
    Passed();
    EXPECT_EQ(window.CountOf(WM_APP), 1) << "the message still reaches the window";
    ::DestroyWindow(window.Handle());
    EXPECT_EQ(SubclassCount(), before);
}

TEST_F(Subclass, ADestroyedWindowLeavesNothing) {
    const std::size_t before = SubclassCount();
    AddSubclass(window.Handle(), &Proc<'a'>);
    AddSubclass(window.Handle(), &Proc<'b'>);
    ::DestroyWindow(window.Handle());
    EXPECT_EQ(SubclassCount(), before);
}

}  // namespace
}  // namespace lunara::test
