#pragma once

// The prediction's warnings on the screen, at most one box an hour.

#include "diary/prediction_state.h"

namespace lunara {

/// Shows the text (allocated with new[]; may be null) in a box of its own, captioned "Warning",
/// with `flags` and the exclamation mark, unless one was shown within the last hour. Frees the text
/// in any case.
void ShowPredictionWarning(CyclePredictor& state, WCHAR* text, UINT flags);

/// The same with the text of string 50001.
void ShowInsufficientDataWarning(CyclePredictor& state, UINT flags);

}  // namespace lunara
