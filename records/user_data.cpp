#include "records/user_data.h"

#include <algorithm>
#include <bit>
#include <memory>

#include "platform/clock.h"
#include "records/data_file.h"
#include "records/data_folder.h"

namespace lunara {
namespace {

constexpr float SmallestStoredWeight = 0.01F;

constexpr WCHAR TemperatureFile[] = TEXT("\\Temperature.dat");
constexpr WCHAR BleedingFile[] = TEXT("\\Bleeding.dat");
constexpr WCHAR NoteFlagsFile[] = TEXT("\\Notes.dat");
constexpr WCHAR NotePagesFile[] = TEXT("\\NotePages.dat");

/// Folder and file name; false when they do not fit into a path. A path that was cut would name
/// another file, perhaps another collection's.
bool JoinPath(const WCHAR* folder, const WCHAR* file, WideString& path) {
    path.assign(folder).append(file);
    return path.size() < PathCapacity;
}

int LoadList(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return LoadDayValues(list, path, password);
}
int LoadList(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return LoadNotePages(list, path, password);
}
int SaveList(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return SaveDayValues(list, path, password);
}
int SaveList(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return SaveNotePages(list, path, password);
}

template <typename List>
int LoadFrom(List& list, const WCHAR* folder, const WCHAR* file, const WCHAR* password) {
    WideString path;
    if (!JoinPath(folder, file, path)) {
        list.Clear();
        list.dirty = false;
        ::SetLastError(DataFileMissing);
        return 0;
    }
    return LoadList(list, path.c_str(), password);
}

/// On failure leaves the path of the file in `failed`.
template <typename List>
int SaveTo(List& list, const WCHAR* folder, const WCHAR* file, const WCHAR* password,
           WideString& failed) {
    if (!list.dirty) {
        return 1;
    }
    WideString path;
    const bool fits = JoinPath(folder, file, path);
    if (fits && SaveList(list, path.c_str(), password) != 0) {
        return 1;
    }
    const DWORD error = fits ? ::GetLastError() : ERROR_FILENAME_EXCED_RANGE;
    failed = path;
    ::SetLastError(error);
    return 0;
}

/// Asks all observers, also after one has refused; then applies the change and tells them all.
template <typename Observers, typename Ask, typename Apply, typename Tell>
int RunChange(const Observers& observers, int count, Ask ask, Apply apply, Tell tell) {
    int allowed = 1;
    for (int i = 0; i < count; ++i) {
        if (ask(*observers[static_cast<std::size_t>(i)]) == 0) {
            allowed = 0;
        }
    }
    if (allowed == 0) {
        return 0;
    }
    apply();
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
    if (LoadFrom(temperature, folder, TemperatureFile, password) == 0 ||
        LoadFrom(bleeding, folder, BleedingFile, password) == 0 ||
        LoadFrom(noteFlags, folder, NoteFlagsFile, password) == 0 ||
        LoadFrom(notePages, folder, NotePagesFile, password) == 0) {
        return 0;
    }
    loaded = true;
    return 1;
}

int UserData::SaveFolder(const WCHAR* folder, const WCHAR* password) {
    if (CreateDirectoryTree(folder) == 0) {
        const DWORD error = ::GetLastError();
        failedPath = folder;
        ::SetLastError(error);
        return 0;
    }
    return SaveTo(temperature, folder, TemperatureFile, password, failedPath) != 0 &&
                   SaveTo(bleeding, folder, BleedingFile, password, failedPath) != 0 &&
                   SaveTo(noteFlags, folder, NoteFlagsFile, password, failedPath) != 0 &&
                   SaveTo(notePages, folder, NotePagesFile, password, failedPath) != 0
               ? 1
               : 0;
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

int UserData::SetCurrentDate(const SYSTEMTIME& date) {
    if (IsSameDay(currentDate, date) != 0) {
        return 1;
    }
    const SYSTEMTIME wanted = date;  // `date` may be the current date itself
    const SYSTEMTIME old = currentDate;
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeDate(*this, old, wanted); },
        [&] { currentDate = wanted; },
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

std::int32_t UserData::GetTemperature(const SYSTEMTIME* date) {
    const SYSTEMTIME day = DateOrCurrent(date);
    if (IsDateAfter(day, LocalNow()) != 0) {
        return FutureTemperature;
    }
    const std::int32_t index = temperature.Find(ToDateKey(day));
    return index < 0 ? NoTemperature : temperature.At(index).value;
}

std::int32_t UserData::GetBleeding(const SYSTEMTIME* date) {
    const SYSTEMTIME day = DateOrCurrent(date);
    if (IsDateAfter(day, LocalNow()) != 0) {
        return FutureBleeding;
    }
    const std::int32_t index = bleeding.Find(ToDateKey(day));
    return index < 0 ? 0 : bleeding.At(index).value;
}

std::int32_t UserData::GetNoteFlags(const SYSTEMTIME* date) {
    const std::int32_t index = noteFlags.Find(ToDateKey(DateOrCurrent(date)));
    return index < 0 ? 0 : noteFlags.At(index).value;
}

WCHAR* UserData::GetNoteText(const SYSTEMTIME* date) {
    return notePages.CopyText(ToDateKey(DateOrCurrent(date)));
}

int UserData::SetTemperature(std::int32_t value) {
    const std::int32_t old = GetTemperature();
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeTemperature(*this, old, value); },
        [&] { ApplyValue(temperature, ToDateKey(currentDate), value, NoTemperature); },
        [&](DataObserver& observer) { observer.TemperatureChanged(*this, value); });
}

int UserData::SetBleeding(std::int32_t value) {
    const std::int32_t old = GetBleeding();
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeBleeding(*this, old, value); },
        [&] { ApplyValue(bleeding, ToDateKey(currentDate), value, 0); },
        [&](DataObserver& observer) { observer.BleedingChanged(*this, value); });
}

int UserData::SetNoteFlags(std::int32_t flags, const SYSTEMTIME* date) {
    const SYSTEMTIME day = DateOrCurrent(date);
    const std::int32_t old = GetNoteFlags(&day);
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeNoteFlags(*this, old, flags); },
        [&] { ApplyValue(noteFlags, ToDateKey(day), flags, 0); },
        [&](DataObserver& observer) { observer.NoteFlagsChanged(*this, flags); });
}

int UserData::SetNoteText(const WCHAR* text, const SYSTEMTIME* date) {
    const SYSTEMTIME day = DateOrCurrent(date);
    const std::unique_ptr<WCHAR[]> old(GetNoteText(&day));
    return RunChange(
        observers, observerCount,
        [&](DataObserver& observer) { return observer.CanChangeNoteText(*this, old.get(), text); },
        [&] { ApplyNoteText(ToDateKey(day), text); },
        [&](DataObserver& observer) { observer.NoteTextChanged(*this, text); });
}

void UserData::ApplyValue(DayValueList& list, DateKey key, std::int32_t value, std::int32_t none) {
    const std::int32_t index = list.Find(key);
    if (index < 0) {
        if (value == none) {
            return;
        }
        list.Set(key, value);
        list.dirty = true;
    } else if (list.At(index).value == value) {
        return;
    } else if (value == none) {
        list.RemoveAt(index);
    } else {
        list.ReplaceAt(index, DayValue{key, value});
        list.dirty = true;
    }
    predictor.predictionUpToDate = false;
}

void UserData::ApplyNoteText(DateKey key, const WCHAR* text) {
    const auto length =
        text == nullptr ? 0 : static_cast<std::int32_t>(std::char_traits<WCHAR>::length(text));
    const bool hadPages = notePages.RemoveText(key) > 0;
    if (!hadPages && length == 0) {
        return;
    }
    if (length > 0) {
        notePages.AppendText(key, text, length);
    }
    notePages.dirty = true;
    predictor.predictionUpToDate = false;
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
        key = (key & 0xFF) < LastDayOfEveryMonth ? key + 1 : KeyOfDayNumber(first + i + 1);
    }
}

bool UserData::IsDirty() const {
    return temperature.dirty || bleeding.dirty || noteFlags.dirty || notePages.dirty;
}

void UserData::MarkAllDirty() {
    for (DayValueList* list : {&temperature, &bleeding, &noteFlags}) {
        list->dirty = true;
    }
    notePages.dirty = true;
}

}  // namespace lunara
