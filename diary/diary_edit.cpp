#include "diary/diary_edit.h"

#include <algorithm>
#include <cstring>

#include "diary/note_texts.h"

namespace lunara {
namespace {

/// Makes `value` the day's. Days mostly come in date order, so the end of the map is tried first.
template <typename Map, typename Value>
void Remember(Map& map, DateKey day, Value&& value) {
    map.insert_or_assign(map.end(), day, std::forward<Value>(value));
}

template <typename List>
bool IsSame(const List& a, const List& b) {
    return a.Count() == b.Count() &&
           (a.Count() == 0 ||
            std::memcmp(a.begin(), b.begin(),
                        static_cast<std::size_t>(a.Count()) * sizeof(*a.begin())) == 0);
}

/// Whether the list changed.
template <typename List>
bool PutIn(List& list, List& merged) {
    if (IsSame(list, merged)) {
        return false;
    }
    list.Swap(merged);
    list.dirty = true;
    return true;
}

}  // namespace

void DiaryEdit::SetTemperature(DateKey day, std::int32_t hundredths) {
    Remember(temperature, day, hundredths);
}

void DiaryEdit::SetBleeding(DateKey day, std::int32_t level) { Remember(bleeding, day, level); }

void DiaryEdit::SetNoteFlags(DateKey day, std::int32_t flags) { Remember(noteFlags, day, flags); }

void DiaryEdit::SetNoteText(DateKey day, WideView text) {
    Remember(notes, day, WideString(text.substr(0, text.find(WCHAR{0}))));
}

void DiaryEdit::DeleteAll() {
    replacesAll = true;
    temperature.clear();
    bleeding.clear();
    noteFlags.clear();
    notes.clear();
}

std::int32_t DiaryEdit::GetNoteFlags(DateKey day) const {
    const auto found = noteFlags.find(day);
    if (found != noteFlags.end()) {
        return found->second;
    }
    const std::int32_t index = replacesAll ? -1 : data.noteFlags.Find(day);
    return index < 0 ? NoNoteFlags : data.noteFlags.At(index).value;
}

bool DiaryEdit::Store() {
    // All that can fail comes before the first change.
    struct Part {
        DayValueList& stored;
        const Values& values;
        std::int32_t none;
        DayValueList merged;
    };
    Part parts[] = {{data.temperature, temperature, NoTemperature, {}},
                    {data.bleeding, bleeding, NoBleeding, {}},
                    {data.noteFlags, noteFlags, NoNoteFlags, {}}};
    for (Part& part : parts) {
        if (Touches(part.values) && !Merge(part.stored, part.values, part.none, part.merged)) {
            return false;
        }
    }
    NotePageList pages(data.notePages.GrowthStep());
    if (Touches(notes) && !MergeNotes(pages)) {
        return false;
    }
    bool hasChanged = Touches(notes) && PutIn(data.notePages, pages);
    for (Part& part : parts) {
        hasChanged |= Touches(part.values) && PutIn(part.stored, part.merged);
    }
    if (hasChanged) {
        data.predictor.predictionUpToDate = false;
    }
    DeleteAll();
    replacesAll = false;
    return true;
}

/// Fills the empty `merged` with the records that `stored` will have, in date order. False without
/// memory.
bool DiaryEdit::Merge(const DayValueList& stored, const Values& values, std::int32_t none,
                      DayValueList& merged) const {
    stored.Sort();
    const DayValue* old = replacesAll ? stored.end() : stored.begin();
    const std::size_t most = static_cast<std::size_t>(stored.end() - old) + values.size();
    if (most == 0) {
        return true;
    }
    DayValue* const first = merged.BeginFill(static_cast<std::int32_t>(most));
    if (first == nullptr) {
        return false;
    }
    DayValue* next = first;
    const DateOrder isEarlier;
    for (const auto& [day, value] : values) {
        while (old != stored.end() && isEarlier(old->date, day)) {
            *next++ = *old++;
        }
        if (old != stored.end() && old->date == day) {
            ++old;
        }
        if (value != none) {
            *next++ = {day, value};
        }
    }
    next = std::copy(old, stored.end(), next);
    const auto count = static_cast<std::int32_t>(next - first);
    merged.EndFill(count);
    return merged.Reserve((count + SortedListStep - 1) / SortedListStep * SortedListStep) != 0;
}

/// Fills the empty `merged` with the pages that the diary will have. False without memory.
bool DiaryEdit::MergeNotes(NotePageList& merged) const {
    Texts changed = notes;
    if (!replacesAll) {
        // A note that stays the same keeps its place. An empty text still deletes: pages that hold
        // no text are pages.
        const std::map<DateKey, WideString> stored = NoteTexts(data.notePages);
        std::erase_if(changed, [&stored](const auto& note) {
            const auto old = stored.find(note.first);
            return old == stored.end() ? note.second.empty()
                                       : !note.second.empty() && old->second == note.second;
        });
        for (const NotePage& page : data.notePages) {
            if (!changed.contains(page.date) && merged.SetAt(merged.Count(), page) == 0) {
                return false;
            }
        }
    }
    for (const auto& [day, text] : changed) {
        if (!text.empty() &&
            merged.AppendText(day, text.c_str(), static_cast<std::int32_t>(text.size())) == 0) {
            return false;
        }
    }
    return true;
}

}  // namespace lunara
