#pragma once

#include <vector>

#include "exchange/diary_csv.h"

namespace lunara {

/// Applies the changes in order, so that a later row for a day wins. Marks the collections that
/// differ afterwards as dirty, and the prediction as out of date. False when memory is short: the
/// data set is then incomplete and must not be saved.
bool ApplyChanges(UserData& data, const std::vector<DayChange>& changes);

}  // namespace lunara
