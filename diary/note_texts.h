#pragma once

#include <map>

#include "platform/text.h"
#include "records/collections.h"

namespace lunara {

/// All notes by day, each as `NotePageList::CopyText` returns it, in one pass over the pages.
/// Looking up every day by itself would scan the pages once per day.
std::map<DateKey, WideString> NoteTexts(const NotePageList& pages);

}  // namespace lunara
