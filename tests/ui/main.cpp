#include <gtest/gtest.h>

#include "window/window.h"

// windows.h must come first
#include <commctrl.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES;
    ::InitCommonControlsEx(&controls);
    lunara::SetAppInstance(::GetModuleHandleW(nullptr));
    return RUN_ALL_TESTS();
}
