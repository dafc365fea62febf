#pragma once

#include <vector>

#include "exchange/diary_csv.h"

namespace lunara {

/// Applies the changes in their order, as one `DiaryEdit`. Only collections that really change
/// become dirty. False without memory; nothing has changed then.
bool ApplyChanges(UserData& data, const std::vector<DayChange>& changes);

}  // namespace lunara
