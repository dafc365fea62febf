#pragma once

// The signed-in user's diary in memory: the four file-backed collections, the state of the
// prediction, the selected day, and the views that watch it. Every edit goes through its setters,
// which ask all observers, apply the change, mark the collection dirty and the prediction out of
// date, and tell the observers.
//
// Single-threaded; observers are called from inside the setters and must not change the data set
// from a can-change call.

#include <array>
#include <cstdint>

#include "diary/data_observer.h"
#include "diary/prediction_state.h"
#include "platform/text.h"
#include "records/collections.h"

namespace lunara {

/// What `GetTemperature` and `GetBleeding` answer for a day after today.
inline constexpr std::int32_t FutureTemperature = -100;
inline constexpr std::int32_t FutureBleeding = -1;

class UserData {
  public:
    static constexpr int MaxObservers = 10;

    UserData();
    UserData(const UserData&) = delete;
    UserData& operator=(const UserData&) = delete;
    virtual ~UserData() = default;

    /// Appends the observer; 0 when it is already attached or ten are. Observers are asked and told
    /// in the order of attaching.
    int AttachObserver(DataObserver& observer);
    /// 0 when it is not attached; the others keep their order.
    int DetachObserver(DataObserver& observer);

    /// Reads temperature, bleeding, note flags and note pages, in this order, from the folder of
    /// the user (see storage/data_folder.h). 1 and the loaded flag on success; 0 at the first
    /// failure with its `DataFileError` in the last error (0 for a file that ends inside its
    /// header), or when an unfinished save cannot be undone (`DataFileCorrupt`). What was read
    /// before the failure stays in memory: unload, or load again.
    int Load(const WCHAR* userName, const WCHAR* password);
    /// Creates the folder and its parents, then writes what is dirty, in the same order: all files
    /// or none (storage/data_file_set.h). 0 at the first failure, with the system's error in the
    /// last error; what was dirty then still is.
    int Save(const WCHAR* userName, const WCHAR* password);
    /// The same with the folder itself (no separator at its end) instead of the user's name.
    int LoadFolder(const WCHAR* folder, const WCHAR* password);
    int SaveFolder(const WCHAR* folder, const WCHAR* password);
    /// Empties the four collections, their dirty flags included, and the loaded flag. Saves
    /// nothing.
    void Unload();
    bool IsLoaded() const { return loaded; }

    void GetCurrentDate(SYSTEMTIME& date) const { date = currentDate; }
    /// 1 when `date` is the current day already (whose time of day then stays) or became it, 0 when
    /// an observer refused.
    int SetCurrentDate(const SYSTEMTIME& date);
    int MoveCurrentDate(std::int32_t days);

    // Getters: `date` null means the current day.
    /// Hundredths of a degree Fahrenheit, `NoTemperature`, or `FutureTemperature` after today.
    std::int32_t GetTemperature(const SYSTEMTIME* date = nullptr);
    /// The recorded level, 0 for none, or `FutureBleeding` after today.
    std::int32_t GetBleeding(const SYSTEMTIME* date = nullptr);
    /// NoteFlag bits; 0 for none. Future days have notes like any other.
    std::int32_t GetNoteFlags(const SYSTEMTIME* date = nullptr);
    /// A new text that the caller frees with delete[], or null when the day has no note.
    WCHAR* GetNoteText(const SYSTEMTIME* date = nullptr);

    // Setters: 1, or 0 when an observer refused, or there was no memory, and nothing changed.
    // Temperature and bleeding are set for the current day; setting the none-value deletes the
    // day's record.
    int SetTemperature(std::int32_t value);
    int SetBleeding(std::int32_t value);
    int SetNoteFlags(std::int32_t flags, const SYSTEMTIME* date = nullptr);
    /// Null or "" deletes the day's note. A text set again moves its pages to the end.
    int SetNoteText(const WCHAR* text, const SYSTEMTIME* date = nullptr);

    /// Sets every value of at least 0.01 for its day `start` + index in `target`, as the float's
    /// bits, and marks the target dirty. The value 0.01f itself is stored.
    void StoreDayWeights(const float* values, std::int32_t length, const SYSTEMTIME& start,
                         DayValueList& target);

    /// Marks all four collections dirty, so that the next save writes every file anew.
    void MarkAllDirty();

    /// Whether a collection differs from its file, so that a save would write or delete one.
    bool IsDirty() const;

    /// After a save that failed: the path of the file (or of the folder) that could not be written.
    const WideString& FailedPath() const { return failedPath; }

    // The collections. Other classes read them; they change through the setters (the companion's
    // import, which has no observers, edits them directly and marks them dirty).
    DayValueList noteFlags;
    NotePageList notePages{10};
    DayValueList temperature;
    DayValueList bleeding;

    /// State and results of the prediction (cycle/predictor.h).
    CyclePredictor predictor;

    /// Start of the latest period of 2 to 7 days; all zero when there is none.
    const SYSTEMTIME& LastValidPeriodStart() const { return predictor.lastValidPeriodStart; }

  private:
    // 0 without memory, with the old record kept.
    int ApplyValue(DayValueList& list, DateKey key, std::int32_t value, std::int32_t none);
    int ApplyNoteText(DateKey key, const WCHAR* text);
    SYSTEMTIME DateOrCurrent(const SYSTEMTIME* date) const;

    std::array<DataObserver*, MaxObservers> observers{};
    int observerCount = 0;
    bool loaded = false;
    WideString failedPath;
    SYSTEMTIME currentDate{};
};

}  // namespace lunara
