#pragma once

#include <map>

#include "platform/text.h"
#include "records/collections.h"

namespace lunara {

/// The notes by day, each as `NotePageList::CopyText` gives it, in one pass over all pages.
std::map<DateKey, WideString> NoteTexts(const NotePageList& pages);

/// Stores the texts (none of them empty) in place of those days' notes: their pages go to the end,
/// all others stay in their order. Marks the list dirty. False without memory, with the list in an
/// unusable state.
bool ReplaceNotes(NotePageList& pages, const std::map<DateKey, WideString>& texts);

}  // namespace lunara
