#include "platform/window_theme.h"

// <uxtheme.h> needs <windows.h> before it.
#include <uxtheme.h>

namespace lunara {

void DropVisualStyle(HWND control) { ::SetWindowTheme(control, TEXT(""), TEXT("")); }

}  // namespace lunara
