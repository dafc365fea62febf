#pragma once

// What tests do to a data set that the program cannot: records that no operation stores, and a
// state that takes a save or a prediction to reach.

#include <cstdlib>

#include "diary/diary_edit.h"
#include "diary/user_data.h"

namespace lunara {

/// The data set's private parts, to be written to directly: nothing becomes dirty or out of date.
struct UserDataTestAccess {
    static DayValueList& Temperature(UserData& data) { return data.temperature; }
    static DayValueList& Bleeding(UserData& data) { return data.bleeding; }
    static DayValueList& NoteFlags(UserData& data) { return data.noteFlags; }
    static NotePageList& NotePages(UserData& data) { return data.notePages; }
    static CyclePredictor& Prediction(UserData& data) { return data.predictor; }
};

namespace test {

/// Unlike an assertion of a test, also for programs without the test framework.
inline void StoreOrDie(DiaryEdit& edit) {
    if (!edit.Store()) {
        std::abort();
    }
}

/// Stores one record, as an import would: on any day, without observers.
inline void RecordTemperature(UserData& data, DateKey day, std::int32_t hundredths) {
    DiaryEdit edit(data);
    edit.SetTemperature(day, hundredths);
    StoreOrDie(edit);
}
inline void RecordBleeding(UserData& data, DateKey day, std::int32_t level) {
    DiaryEdit edit(data);
    edit.SetBleeding(day, level);
    StoreOrDie(edit);
}

/// Clears the dirty flags, as a save does.
inline void ClearDirty(UserData& data) {
    UserDataTestAccess::Temperature(data).dirty = false;
    UserDataTestAccess::Bleeding(data).dirty = false;
    UserDataTestAccess::NoteFlags(data).dirty = false;
    UserDataTestAccess::NotePages(data).dirty = false;
}

}  // namespace test
}  // namespace lunara
