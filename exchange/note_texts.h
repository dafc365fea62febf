#pragma once

// The paged notes of a diary as one text per day, for export and import.

#include <map>

#include "platform/text.h"
#include "records/collections.h"

namespace lunara {

/// Returns all notes by day, each with the text that `NotePageList::CopyText` gives, in one pass
/// over the pages.
std::map<DateKey, WideString> NoteTexts(const NotePageList& pages);

/// Replaces the notes of the days in `texts`, none of which is empty. The new pages go to the end;
/// all other pages keep their order. Marks the list dirty. False when memory is short: the list is
/// then incomplete and must not be saved.
bool ReplaceNotes(NotePageList& pages, const std::map<DateKey, WideString>& texts);

}  // namespace lunara
