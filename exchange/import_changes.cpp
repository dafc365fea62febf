#include "exchange/import_changes.h"

#include "diary/diary_edit.h"

namespace lunara {
namespace {

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

}  // namespace

bool ApplyChanges(UserData& data, const std::vector<DayChange>& changes) {
    DiaryEdit edit(data);
    for (const DayChange& change : changes) {
        if (change.bleeding) {
            edit.SetBleeding(change.date, *change.bleeding);
        }
        if (change.temperature) {
            edit.SetTemperature(change.date, *change.temperature);
        }
        if (change.cramps || change.pms) {
            edit.SetNoteFlags(change.date, ChangedMarks(edit.GetNoteFlags(change.date), change));
        }
        if (change.note) {
            edit.SetNoteText(change.date, *change.note);
        }
    }
    return edit.Store();
}

}  // namespace lunara
