#include "diary/user_data.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <utility>

#include "platform/clock.h"
#include "storage/data_file.h"
#include "storage/data_folder.h"

namespace lunara {
namespace {

constexpr float SmallestStoredWeight = 0.01F;
constexpr DWORD WarningPauseMs = 3'600'000;

// One name for both kinds of list.
int LoadList(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return LoadDayValues(list, path, password);
}
int LoadList(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return LoadNotePages(list, path, password);
}
int WriteList(DayValueList& list, ReplacementFile& file, const WCHAR* password) {
    return WriteDayValues(list, file, password);
}
int WriteList(NotePageList& list, ReplacementFile& file, const WCHAR* password) {
    return WriteNotePages(list, file, password);
}

template <typename List>
int LoadFrom(List& list, const WCHAR* folder, DataFile which, const WCHAR* password) {
    WideString path;
    if (!DataFilePath(folder, which, path)) {
        list.Clear();
        list.dirty = false;
        ::SetLastError(DataFileMissing);
        return 0;
    }
    return LoadList(list, path.c_str(), password);
}

/// Adds the list's file to the set of files that take the old ones' places together.
template <typename List>
int AddTo(DataFileSet& files, DataFile which, List& list, const WCHAR* password) {
    if (!list.dirty) {
        return 1;
    }
    if (list.Count() == 0) {
        return files.Delete(which);
    }
    ReplacementFile* file = files.Replace(which);
    return file != nullptr ? WriteList(list, *file, password) : 0;
}

/// Asks every observer, even after one has refused. Unless one has, applies the change and, when
/// that succeeds, tells every observer.
template <typename Observers, typename Ask, typename Apply, typename Tell>
int RunChange(const Observers& observers, int count, Ask ask, Apply apply, Tell tell) {
    int allowed = 1;
    for (int i = 0; i < count; ++i) {
        if (ask(*observers[static_cast<std::size_t>(i)]) == 0) {
            allowed = 0;
        }
    }
    if (allowed == 0 || apply() == 0) {
        return 0;
    }
    for (int i = 0; i < count; ++i) {
        tell(*observers[static_cast<std::size_t>(i)]);
    }
    return 1;
}

}  // namespace

UserData::UserData() : currentDate(LocalNow()) {}

int UserData::AttachObserver(DataObserver& observer) {
    DataObserver** last = observers.data() + observerCount;
    if (observerCount == MaxObservers || std::find(observers.data(), last, &observer) != last) {
        return 0;
    }
    observers[static_cast<std::size_t>(observerCount++)] = &observer;
    return 1;
}

int UserData::DetachObserver(DataObserver& observer) {
    DataObserver** last = observers.data() + observerCount;
    DataObserver** match = std::find(observers.data(), last, &observer);
    if (match == last) {
        return 0;
    }
    std::copy(match + 1, last, match);
    observers[static_cast<std::size_t>(--observerCount)] = nullptr;
    return 1;
}

int UserData::Load(const WCHAR* userName, const WCHAR* password) {
    return LoadFolder(DataFolderOfUser(userName).c_str(), password);
}

int UserData::Save(const WCHAR* userName, const WCHAR* password) {
    return SaveFolder(DataFolderOfUser(userName).c_str(), password);
}

int UserData::LoadFolder(const WCHAR* folder, const WCHAR* password) {
    predictor.predictionUpToDate = false;
    if (MendDataFiles(folder) == 0) {
        // The folder holds files of two saves. Loaded as they are, the next save would lose one.
        ::SetLastError(DataFileCorrupt);
        return 0;
    }
    if (LoadFrom(temperature, folder, DataFile::Temperature, password) == 0 ||
        LoadFrom(bleeding, folder, DataFile::Bleeding, password) == 0 ||
        LoadFrom(noteFlags, folder, DataFile::NoteFlags, password) == 0 ||
        LoadFrom(notePages, folder, DataFile::NotePages, password) == 0) {
        return 0;
    }
    loaded = true;
    return 1;
}

int UserData::LoadFile(DataFile which, const WCHAR* path, const WCHAR* password) {
    predictor.predictionUpToDate = false;
    switch (which) {
        case DataFile::Temperature:
            return LoadDayValues(temperature, path, password);
        case DataFile::Bleeding:
            return LoadDayValues(bleeding, path, password);
        case DataFile::NoteFlags:
            return LoadDayValues(noteFlags, path, password);
        case DataFile::NotePages:
            break;
    }
    return LoadNotePages(notePages, path, password);
}

int UserData::SaveFolder(const WCHAR* folder, const WCHAR* password) {
    if (CreateDirectoryTree(folder) == 0 || MendDataFiles(folder) == 0) {
        RememberFailure({std::nullopt, folder});
        return 0;
    }
    DataFileSet files(folder);
    if (AddTo(files, DataFile::Temperature, temperature, password) == 0 ||
        AddTo(files, DataFile::Bleeding, bleeding, password) == 0 ||
        AddTo(files, DataFile::NoteFlags, noteFlags, password) == 0 ||
        AddTo(files, DataFile::NotePages, notePages, password) == 0 || files.PutInPlace() == 0) {
        RememberFailure(files.LastFailure());
        return 0;
    }
    for (DayValueList* list : {&temperature, &bleeding, &noteFlags}) {
        list->dirty = false;
    }
    notePages.dirty = false;
    return 1;
}

void UserData::Unload() {
    for (DayValueList* list : {&temperature, &bleeding, &noteFlags}) {
        list->Clear();
    }
    notePages.Clear();
    notePages.dirty = false;
    predictor.predictionUpToDate = false;
    loaded = false;
}

void UserData::RememberFailure(SaveFailure failure) {
    const DWORD error = ::GetLastError();  // allocation and release may change it
    lastFailure = std::move(failure);
    ::SetLastError(error);
}

int UserData::SetCurrentDate(const SYSTEMTIME& date) {
    if (IsSameDay(currentDate, date) != 0) {
        return 1;
    }
    const SYSTEMTIME wanted = date;  // `date` may be the current date itself
    const SYSTEMTIME old = currentDate;
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeDate(*this, old, wanted); },
        [&] {
            currentDate = wanted;
            return 1;
        },
        [&](DataObserver& observer) { observer.DateChanged(*this, old, currentDate); });
}

int UserData::MoveCurrentDate(std::int32_t days) {
    SYSTEMTIME moved{};
    if (AddDays(currentDate, days, moved) == 0) {
        return 0;
    }
    return SetCurrentDate(moved);
}

SYSTEMTIME UserData::DateOrCurrent(const SYSTEMTIME* date) const {
    return date != nullptr ? *date : currentDate;
}

std::int32_t UserData::GetTemperature(const SYSTEMTIME* date) const {
    const SYSTEMTIME day = DateOrCurrent(date);
    if (IsDateAfter(day, LocalNow()) != 0) {
        return FutureTemperature;
    }
    const std::int32_t index = temperature.Find(ToDateKey(day));
    return index < 0 ? NoTemperature : temperature.At(index).value;
}

std::int32_t UserData::GetBleeding(const SYSTEMTIME* date) const {
    const SYSTEMTIME day = DateOrCurrent(date);
    if (IsDateAfter(day, LocalNow()) != 0) {
        return FutureBleeding;
    }
    const std::int32_t index = bleeding.Find(ToDateKey(day));
    return index < 0 ? NoBleeding : bleeding.At(index).value;
}

std::int32_t UserData::GetNoteFlags(const SYSTEMTIME* date) const {
    const std::int32_t index = noteFlags.Find(ToDateKey(DateOrCurrent(date)));
    return index < 0 ? NoNoteFlags : noteFlags.At(index).value;
}

WCHAR* UserData::GetNoteText(const SYSTEMTIME* date) const {
    return notePages.CopyText(ToDateKey(DateOrCurrent(date)));
}

int UserData::SetTemperature(std::int32_t value) {
    const std::int32_t old = GetTemperature();
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeTemperature(*this, old, value); },
        [&] { return ApplyValue(temperature, ToDateKey(currentDate), value, NoTemperature); },
        [&](DataObserver& observer) { observer.TemperatureChanged(*this, value); });
}

int UserData::SetBleeding(std::int32_t value) {
    const std::int32_t old = GetBleeding();
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeBleeding(*this, old, value); },
        [&] { return ApplyValue(bleeding, ToDateKey(currentDate), value, NoBleeding); },
        [&](DataObserver& observer) { observer.BleedingChanged(*this, value); });
}

int UserData::SetNoteFlags(std::int32_t flags, const SYSTEMTIME* date) {
    const SYSTEMTIME day = DateOrCurrent(date);
    const std::int32_t old = GetNoteFlags(&day);
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeNoteFlags(*this, old, flags); },
        [&] { return ApplyValue(noteFlags, ToDateKey(day), flags, NoNoteFlags); },
        [&](DataObserver& observer) { observer.NoteFlagsChanged(*this, flags); });
}

int UserData::SetNoteText(const WCHAR* text, const SYSTEMTIME* date) {
    const SYSTEMTIME day = DateOrCurrent(date);
    const std::unique_ptr<WCHAR[]> old(GetNoteText(&day));
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeNoteText(*this, old.get(), text); },
        [&] { return ApplyNoteText(ToDateKey(day), text); },
        [&](DataObserver& observer) { observer.NoteTextChanged(*this, text); });
}

int UserData::ApplyValue(DayValueList& list, DateKey key, std::int32_t value, std::int32_t none) {
    const std::int32_t index = list.Find(key);
    if (index < 0) {
        if (value == none) {
            return 1;
        }
        if (list.Set(key, value) == 0) {
            return 0;
        }
        list.dirty = true;
    } else if (list.At(index).value == value) {
        return 1;
    } else if (value == none) {
        list.RemoveAt(index);
    } else {
        list.ReplaceAt(index, DayValue{key, value});
        list.dirty = true;
    }
    predictor.predictionUpToDate = false;
    return 1;
}

int UserData::ApplyNoteText(DateKey key, const WCHAR* text) {
    const auto length =
        text == nullptr ? 0 : static_cast<std::int32_t>(std::char_traits<WCHAR>::length(text));
    if (length == 0) {
        if (notePages.RemoveText(key) == 0) {
            return 1;
        }
    } else if (notePages.ReplaceText(key, text, length) == 0) {
        return 0;
    }
    notePages.dirty = true;
    predictor.predictionUpToDate = false;
    return 1;
}

void UserData::StoreDayWeights(const float* values, std::int32_t length, const SYSTEMTIME& start,
                               DayValueList& target) {
    constexpr DateKey LastDayOfEveryMonth = 28;
    const std::int32_t first = DayNumber(ToDateKey(start));
    DateKey key = KeyOfDayNumber(first);
    for (std::int32_t i = 0; i < length; ++i) {
        if (values[i] >= SmallestStoredWeight) {
            target.Set(key, std::bit_cast<std::int32_t>(values[i]));
            target.dirty = true;
        }
        // Up to the 28th the next day's key is one higher, which saves converting a day number.
        key = (key & 0xFF) < LastDayOfEveryMonth ? key + 1 : KeyOfDayNumber(first + i + 1);
    }
}

bool UserData::TakeWarningTurn(DWORD tick) {
    if (static_cast<DWORD>(tick - predictor.lastWarningTick) <= WarningPauseMs) {
        return false;
    }
    predictor.lastWarningTick = tick;
    return true;
}

std::int32_t UserData::Count(DataFile which) const {
    switch (which) {
        case DataFile::Temperature:
            return temperature.Count();
        case DataFile::Bleeding:
            return bleeding.Count();
        case DataFile::NoteFlags:
            return noteFlags.Count();
        case DataFile::NotePages:
            break;
    }
    return notePages.Count();
}

bool UserData::IsDirty(DataFile which) const {
    switch (which) {
        case DataFile::Temperature:
            return temperature.dirty;
        case DataFile::Bleeding:
            return bleeding.dirty;
        case DataFile::NoteFlags:
            return noteFlags.dirty;
        case DataFile::NotePages:
            break;
    }
    return notePages.dirty;
}

bool UserData::IsDirty() const {
    return std::any_of(std::begin(AllDataFiles), std::end(AllDataFiles),
                       [this](DataFile which) { return IsDirty(which); });
}

void UserData::MarkAllDirty() {
    for (DayValueList* list : {&temperature, &bleeding, &noteFlags}) {
        list->dirty = true;
    }
    notePages.dirty = true;
}

}  // namespace lunara
