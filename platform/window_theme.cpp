#include "platform/window_theme.h"

// windows.h must come first
#include <uxtheme.h>

namespace lunara {

void DropVisualStyle(HWND control) { ::SetWindowTheme(control, TEXT(""), TEXT("")); }

}  // namespace lunara
