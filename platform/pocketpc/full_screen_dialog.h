#pragma once

// Full-screen dialogs: the part of SHInitDialog that can run earlier.

#include "platform/win32.h"

namespace lunara {

/// Lays `dialog` over the client area of its owner (or of the main window if it has none) and keeps
/// it there until it is destroyed, with its title at the top and its controls scaled evenly. Does
/// nothing without an owner, or when the dialog is full-screen already.
///
/// SHInitDialog calls it, too. Calling it at the start of WM_INITDIALOG, before the controls have
/// texts, fonts and the focus, takes half the time.
void CoverOwner(HWND dialog);

}  // namespace lunara
