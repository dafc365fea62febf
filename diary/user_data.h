#pragma once

// The signed-in user's diary in memory: the four file-backed collections, the prediction computed
// from them, the selected day, and the views that watch it.
//
// Records change in three ways only. The setters edit one day: each asks all observers, applies the
// change, marks the collection dirty and the prediction out of date, and tells the observers.
// `DiaryEdit` (diary/diary_edit.h) stores a whole batch without observers. Loading and unloading
// replace everything. All else is const, so nothing outside marks anything dirty or out of date.
//
// Single-threaded, reading included (a lookup may sort). Observers are called from inside the
// setters and must not change the data set from a can-change call.

#include <array>
#include <cstdint>

#include "diary/data_observer.h"
#include "diary/prediction_state.h"
#include "platform/text.h"
#include "records/collections.h"
#include "storage/data_file_set.h"

namespace lunara {

/// What `GetTemperature` and `GetBleeding` return for a day after today.
inline constexpr std::int32_t FutureTemperature = -100;
inline constexpr std::int32_t FutureBleeding = -1;

class UserData {
  public:
    static constexpr int MaxObservers = 10;

    UserData();
    UserData(const UserData&) = delete;
    UserData& operator=(const UserData&) = delete;
    virtual ~UserData() = default;

    /// Appends the observer; 0 when it is already attached or `MaxObservers` are. Observers are
    /// asked and told in the order of attaching. The observer must detach before it is destroyed.
    int AttachObserver(DataObserver& observer);
    /// 0 when it is not attached; the others keep their order.
    int DetachObserver(DataObserver& observer);

    // ---- Files ----

    /// Reads temperature, bleeding, note flags and note pages, in this order, from the user's
    /// folder (storage/data_folder.h). Returns 1 and sets the loaded flag, or returns 0 at the
    /// first failure with its `DataFileError` in the last error: 0 for a file that ends inside its
    /// header, `DataFileCorrupt` for an unfinished save that cannot be undone. Collections read
    /// before the failure stay in memory: unload, or load again.
    int Load(const WCHAR* userName, const WCHAR* password);
    /// Creates the user's folder and its parents, then writes every dirty collection, in the order
    /// of `Load`: all of them or none (storage/data_file_set.h). Returns 0 at the first failure,
    /// with the system's error in the last error and the place in `LastFailure`; what was dirty
    /// still is.
    int Save(const WCHAR* userName, const WCHAR* password);
    /// `Load` and `Save` with the folder's own path, without a separator at its end.
    int LoadFolder(const WCHAR* folder, const WCHAR* password);
    int SaveFolder(const WCHAR* folder, const WCHAR* password);
    /// Reads one collection from the file at `path`, as `LoadDayValues` and `LoadNotePages` do, and
    /// leaves the others and the loaded flag alone: for a caller that tells which file is bad. The
    /// folder must be mended first (`MendDataFiles`).
    int LoadFile(DataFile which, const WCHAR* path, const WCHAR* password);
    /// Empties the four collections, clears their dirty flags and the loaded flag. Saves nothing.
    void Unload();
    bool IsLoaded() const { return loaded; }

    /// Where the last save that failed did so; nothing to read before a save has failed.
    const SaveFailure& LastFailure() const { return lastFailure; }

    /// Marks all four collections dirty, so that the next save writes every file anew, as a new
    /// password needs it.
    void MarkAllDirty();
    /// Whether the collection differs from its file, so that a save would write or delete it.
    bool IsDirty(DataFile which) const;
    /// Whether any of the four does.
    bool IsDirty() const;

    // ---- Reading ----

    void GetCurrentDate(SYSTEMTIME& date) const { date = currentDate; }

    // Getters of one day: `date` null means the current day.
    /// Hundredths of a degree Fahrenheit, `NoTemperature`, or `FutureTemperature` after today.
    std::int32_t GetTemperature(const SYSTEMTIME* date = nullptr) const;
    /// The recorded level, `NoBleeding`, or `FutureBleeding` after today.
    std::int32_t GetBleeding(const SYSTEMTIME* date = nullptr) const;
    /// NoteFlag bits, or `NoNoteFlags`. Days after today have notes like any other.
    std::int32_t GetNoteFlags(const SYSTEMTIME* date = nullptr) const;
    /// A new text that the caller frees with delete[], or null when the day has no note.
    WCHAR* GetNoteText(const SYSTEMTIME* date = nullptr) const;

    // The collections. References stay valid as long as the data set; indices and iterators only
    // until the next lookup or change.
    const DayValueList& Temperature() const { return temperature; }
    const DayValueList& Bleeding() const { return bleeding; }
    const DayValueList& NoteFlags() const { return noteFlags; }
    const NotePageList& NotePages() const { return notePages; }
    /// Number of records in the collection of that file.
    std::int32_t Count(DataFile which) const;

    // ---- Changing one day ----

    /// 1 when `date` is the current day already (whose time of day then stays) or became it, 0 when
    /// an observer refused.
    int SetCurrentDate(const SYSTEMTIME& date);
    /// Moves the current day by that many days; 0 also when it would leave the years 1601 to 30827.
    /// Part of the data set's public operations; the program itself does not call it.
    int MoveCurrentDate(std::int32_t days);

    // Setters of one day: 1, or 0 when an observer refused or there was no memory; nothing has
    // changed then. Setting a collection's none-value deletes the day's record.
    /// Temperature and bleeding are set for the current day.
    int SetTemperature(std::int32_t value);
    int SetBleeding(std::int32_t value);
    /// `date` null means the current day.
    int SetNoteFlags(std::int32_t flags, const SYSTEMTIME* date = nullptr);
    /// Null or "" deletes the day's note. A text set again moves its pages to the end.
    int SetNoteText(const WCHAR* text, const SYSTEMTIME* date = nullptr);

    // ---- The prediction ----

    /// State and results, as of the last `UpdatePrediction` (cycle/predictor.h).
    const CyclePredictor& Prediction() const { return predictor; }
    /// Start of the latest period of `ShortestPeriod` to `LongestPeriod` days; all zero when there
    /// is none.
    const SYSTEMTIME& LastValidPeriodStart() const { return predictor.lastValidPeriodStart; }

    /// Receives the warnings from now on; null drops them. The sink must outlive its registration.
    void SetWarningSink(WarningSink* sink) { predictor.warningSink = sink; }
    /// Whether a warning may be shown at this tick: more than an hour after the last one. When it
    /// may, the tick is remembered. The difference is unsigned, so the tick count may wrap.
    bool TakeWarningTurn(DWORD tick);

    /// Sets every value of at least 0.01 for its day `start` + index in `target`, as the float's
    /// bits, and marks the target dirty. The value 0.01f itself is stored.
    static void StoreDayWeights(const float* values, std::int32_t length, const SYSTEMTIME& start,
                                DayValueList& target);

  private:
    // The engine: the only code outside this class that writes to `predictor`, and the only code at
    // all that sets its up-to-date mark.
    friend int UpdatePrediction(UserData& data, int showMessages);
    friend class DiaryEdit;
    // Tests put in what no operation stores: impossible days, levels of 0, a prediction by hand.
    friend struct UserDataTestAccess;

    // 0 without memory, with the old record kept.
    int ApplyValue(DayValueList& list, DateKey key, std::int32_t value, std::int32_t none);
    int ApplyNoteText(DateKey key, const WCHAR* text);
    SYSTEMTIME DateOrCurrent(const SYSTEMTIME* date) const;
    void RememberFailure(SaveFailure failure);

    std::array<DataObserver*, MaxObservers> observers{};
    int observerCount = 0;
    DayValueList noteFlags;
    NotePageList notePages{10};
    bool loaded = false;
    SaveFailure lastFailure;
    SYSTEMTIME currentDate{};
    DayValueList temperature;
    DayValueList bleeding;
    CyclePredictor predictor;
};

}  // namespace lunara
