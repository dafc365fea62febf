#pragma once

// A batch of changes to a diary's records: an import, a sample, a whole new content.
//
// The batch collects what it is told and changes nothing until `Store`, which puts all of it into
// the diary or, without memory, none. Collecting costs O(log n) per day and storing one pass over
// each collection that the batch touches, whatever the order of the days. Dirty flags and the
// prediction's up-to-date mark follow from what really changed; the caller has nothing to mark.
//
//     DiaryEdit edit(data);
//     edit.SetBleeding(day, 2);
//     edit.SetNoteText(day, TEXT(""));  // deletes the day's note
//     if (!edit.Store()) ...

#include <cstdint>
#include <map>

#include "diary/user_data.h"

namespace lunara {

/// A batch that is destroyed without `Store` changes nothing.
class DiaryEdit {
  public:
    /// `edited` outlives the batch, and nothing else changes its records before `Store`.
    explicit DiaryEdit(UserData& edited) : data(edited) {}
    DiaryEdit(const DiaryEdit&) = delete;
    DiaryEdit& operator=(const DiaryEdit&) = delete;
    ~DiaryEdit() = default;

    // Each call replaces what the batch held for that day. Values are stored as they are: any
    // 32-bit number, any key, future days included. `NoTemperature`, `NoBleeding`, `NoNoteFlags`
    // and an empty text delete the day's record.
    void SetTemperature(DateKey day, std::int32_t hundredths);
    void SetBleeding(DateKey day, std::int32_t level);
    void SetNoteFlags(DateKey day, std::int32_t flags);
    /// `text` may be of any length and ends before its first zero unit.
    void SetNoteText(DateKey day, WideView text);

    /// Deletes every record of the diary and what the batch holds so far; what is set afterwards
    /// becomes the whole content.
    void DeleteAll();

    /// The day's flags as the batch would leave them, so that single bits can be changed.
    std::int32_t GetNoteFlags(DateKey day) const;

    /// Puts the changes into the diary and empties the batch. A collection becomes dirty, and the
    /// prediction out of date, only when its records differ from before; a batch that repeats what
    /// is stored changes nothing. Changed notes move behind all others, in date order.
    ///
    /// Observers are neither asked nor told: a window that shows the diary repaints itself after
    /// the call. False without memory for the new records: the diary is as it was, and so is the
    /// batch.
    [[nodiscard]] bool Store();

  private:
    /// Earlier days first, by the order of the sorted lists: keys count as signed numbers.
    struct DateOrder {
        bool operator()(DateKey a, DateKey b) const {
            return static_cast<std::int32_t>(a) < static_cast<std::int32_t>(b);
        }
    };
    using Values = std::map<DateKey, std::int32_t, DateOrder>;
    using Texts = std::map<DateKey, WideString, DateOrder>;

    template <typename Map>
    bool Touches(const Map& changes) const {
        return replacesAll || !changes.empty();
    }
    bool Merge(const DayValueList& stored, const Values& values, std::int32_t none,
               DayValueList& merged) const;
    bool MergeNotes(NotePageList& merged) const;

    UserData& data;
    bool replacesAll = false;
    Values temperature;
    Values bleeding;
    Values noteFlags;
    Texts notes;  // "" deletes
};

}  // namespace lunara
