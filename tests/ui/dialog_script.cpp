#include "tests/ui/dialog_script.h"

#include <string>

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

constexpr int PatienceTicks = 300;  // of 10 ms each
constexpr WCHAR DialogClass[] = TEXT("#32770");

DialogScript* currentScript = nullptr;

BOOL CALLBACK TakeDialog(HWND window, LPARAM found) {
    if (ClassOf(window) == DialogClass && ::IsWindowVisible(window) != FALSE) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

}  // namespace

HWND VisibleDialog() {
    HWND found = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), &TakeDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

DialogScript::DialogScript() : timer(::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &OnTick)) {
    currentScript = this;
}

DialogScript::~DialogScript() {
    ::KillTimer(nullptr, timer);
    currentScript = nullptr;
    EXPECT_TRUE(steps.empty()) << steps.size() << " steps of the script were not played";
}

DialogScript& DialogScript::Then(Step step) {
    steps.push_back(std::move(step));
    return *this;
}

DialogScript& DialogScript::Press(int controlId) {
    return Then([controlId](HWND dialog) {
        ::SendMessageW(::GetDlgItem(dialog, controlId), BM_CLICK, 0, 0);
    });
}

DialogScript& DialogScript::Type(int controlId, const WCHAR* text) {
    return Then([controlId, typed = std::wstring(text)](HWND dialog) {
        ::SetDlgItemTextW(dialog, controlId, typed.c_str());
    });
}

void CALLBACK DialogScript::OnTick(HWND, UINT, UINT_PTR, DWORD) {
    if (currentScript != nullptr) {
        currentScript->Tick();
    }
}

// WM_TIMER is generated only while the queue holds no posted message, so a tick comes after
// everything that the step before it posted.
void DialogScript::Tick() {
    const HWND dialog = VisibleDialog();
    if (dialog != nullptr && !steps.empty()) {
        idleTicks = 0;
        const Step step = std::move(steps.front());
        steps.pop_front();
        step(dialog);
    } else if (dialog != nullptr && ++idleTicks > PatienceTicks) {
        ADD_FAILURE() << "a dialog stayed open";
        idleTicks = 0;
        ::PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
}

}  // namespace lunara::test
