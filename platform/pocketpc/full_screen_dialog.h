#pragma once

#include "platform/win32.h"

namespace lunara {

/// Lays the dialog over the client area of its owner (or of the program's top-level window) and
/// keeps it there, with its title at the top and its controls grown evenly. SHInitDialog does the
/// same; but to do it before the dialog has texts, fonts and the focus costs half.
void CoverOwner(HWND dialog);

}  // namespace lunara
