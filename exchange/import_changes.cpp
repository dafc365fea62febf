#include "exchange/import_changes.h"

#include <map>

#include "exchange/note_texts.h"

namespace lunara {
namespace {

/// Edits the values of a list in a map and writes them back at the end. Editing the list itself
/// would sort it again for every lookup after a new day.
class ValuesByDay {
  public:
    explicit ValuesByDay(DayValueList& changed) : list(changed) {
        for (const DayValue& record : changed) {
            stored.emplace_hint(stored.end(), record.date, record.value);
        }
        values = stored;
    }

    /// Returns the day's value, or `none` when it has no record.
    std::int32_t Get(DateKey date, std::int32_t none) const {
        const auto found = values.find(date);
        return found == values.end() ? none : found->second;
    }

    /// Sets the day's value; `none` deletes the record.
    void Set(DateKey date, std::int32_t value, std::int32_t none) {
        if (value == none) {
            values.erase(date);
        } else {
            values[date] = value;
        }
    }

    /// Writes the values back and marks the list dirty, if any value changed. False when memory is
    /// short; the list is then incomplete.
    bool Store() {
        if (values == stored) {
            return true;
        }
        list.Clear();
        list.dirty = true;
        for (const auto& [date, value] : values) {
            if (list.Set(date, value) == 0) {
                return false;
            }
        }
        return true;
    }

  private:
    DayValueList& list;
    std::map<DateKey, std::int32_t> stored;
    std::map<DateKey, std::int32_t> values;
};

/// Applies the marks that the change names to `flags`; keeps all other bits.
std::int32_t ChangedMarks(std::int32_t flags, const DayChange& change) {
    if (change.cramps) {
        flags = *change.cramps ? flags | NoteFlagCramps : flags & ~NoteFlagCramps;
    }
    if (change.pms) {
        flags = *change.pms ? flags | NoteFlagPms : flags & ~NoteFlagPms;
    }
    return flags;
}

bool ApplyNotes(UserData& data, const std::vector<DayChange>& changes) {
    std::map<DateKey, WideString> wanted;
    for (const DayChange& change : changes) {
        if (change.note) {
            wanted[change.date] = *change.note;
        }
    }
    const std::map<DateKey, WideString> stored = NoteTexts(data.notePages);
    std::erase_if(wanted, [&stored](const auto& note) {
        const auto old = stored.find(note.first);
        return old != stored.end() && old->second == note.second;
    });
    return wanted.empty() || ReplaceNotes(data.notePages, wanted);
}

}  // namespace

bool ApplyChanges(UserData& data, const std::vector<DayChange>& changes) {
    ValuesByDay bleeding(data.bleeding);
    ValuesByDay temperature(data.temperature);
    ValuesByDay noteFlags(data.noteFlags);
    for (const DayChange& change : changes) {
        if (change.bleeding) {
            bleeding.Set(change.date, *change.bleeding, 0);
        }
        if (change.temperature) {
            temperature.Set(change.date, *change.temperature, NoTemperature);
        }
        if (change.cramps || change.pms) {
            noteFlags.Set(change.date, ChangedMarks(noteFlags.Get(change.date, 0), change), 0);
        }
    }
    data.predictor.predictionUpToDate = false;
    return bleeding.Store() && temperature.Store() && noteFlags.Store() &&
           ApplyNotes(data, changes);
}

}  // namespace lunara
