#pragma once

// Message boxes with the prediction's warnings, throttled to one an hour.

#include "diary/user_data.h"

namespace lunara {

/// Shows `text` in a message box captioned "Warning" with MB_ `flags` and an exclamation mark,
/// unless a warning was shown within the last hour. Takes ownership of `text`, which was allocated
/// with new[], and frees it whether shown or not; null shows nothing.
void ShowPredictionWarning(UserData& data, WCHAR* text, UINT flags);

/// Shows string 50001 (too little data for a prediction) in a message box captioned "Warning" with
/// MB_ `flags` and an exclamation mark, unless a warning was shown within the last hour. The
/// program itself does not call it: the predictor puts this text into its own warnings.
void ShowInsufficientDataWarning(UserData& data, UINT flags);

}  // namespace lunara
