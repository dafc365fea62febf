#pragma once

// The prediction's warnings on the screen, at most one box an hour.

#include "diary/user_data.h"

namespace lunara {

/// Shows the text (allocated with new[]; may be null) in a box of its own, captioned "Warning",
/// with `flags` and the exclamation mark, unless one was shown within the last hour. Frees the text
/// in any case.
void ShowPredictionWarning(UserData& data, WCHAR* text, UINT flags);

/// Shows string 50001 ("Insufficient statistical data. ") under the same rule of one box an hour.
/// The engine composes that text itself, so the program does not call this.
void ShowInsufficientDataWarning(UserData& data, UINT flags);

}  // namespace lunara
