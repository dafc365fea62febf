#include "views/control_class.h"

#include "frame/window.h"

namespace lunara {

int RegisterControlClass(const WCHAR* name) {
    WNDCLASSW known{};
    if (::GetClassInfoW(AppInstance(), name, &known) != FALSE) {
        return 1;
    }
    WNDCLASSW control{};
    control.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
    control.lpfnWndProc = &FrameworkWindowProc;
    control.hInstance = AppInstance();
    control.lpszClassName = name;
    return ::RegisterClassW(&control) != 0 ? 1 : 0;
}

}  // namespace lunara
