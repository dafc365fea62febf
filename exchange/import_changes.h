#pragma once

#include <vector>

#include "exchange/diary_csv.h"

namespace lunara {

/// Applies the changes in their order. Only collections that really change become dirty. False
/// without memory: the data set must not be saved then.
bool ApplyChanges(UserData& data, const std::vector<DayChange>& changes);

}  // namespace lunara
