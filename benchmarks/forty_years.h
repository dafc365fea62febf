#pragma once

// The diary of 40 years with which loading, saving, backup and restore are measured.

#include "platform/text.h"
#include "records/collections.h"
#include "records/dates.h"

namespace lunara::bench {

inline constexpr std::int32_t BleedingDays = 2'700;
inline constexpr std::int32_t TemperatureDays = 14'600;
inline constexpr std::int32_t NotePages = 3'000;
inline constexpr const WCHAR* DiaryPassword = TEXT("ein geheimeswort");
inline constexpr const char* DiaryDescription =
    "40 years in 3 files: 2,700 bleeding days, 14,600 temperatures, 3,000 note pages "
    "(354,412 bytes)";

/// Bytes of the three files: a header of 4 bytes each, 8 bytes per day value, 72 per note page.
inline constexpr std::int64_t DiaryBytes =
    3 * 4 + (TemperatureDays + BleedingDays) * 8 + NotePages * 72;

/// Fills the three empty collections and marks them dirty. Each note takes two pages; false when
/// their number is not NotePages.
inline bool FillFortyYears(DayValueList& temperature, DayValueList& bleeding, NotePageList& notes) {
    const std::int32_t first = DayNumber(MakeDateKey(1986, 1, 1));
    for (std::int32_t i = 0; i < TemperatureDays; ++i) {
        temperature.Set(KeyOfDayNumber(first + i), 9700 + i % 100);
    }
    for (std::int32_t i = 0; i < BleedingDays; ++i) {
        bleeding.Set(KeyOfDayNumber(first + i / 5 * 28 + i % 5), 1);
    }
    const WideString text(60, 'n');
    for (std::int32_t i = 0; i < NotePages / 2; ++i) {
        notes.AppendText(KeyOfDayNumber(first + 9 * i), text.c_str(), 60);
    }
    temperature.dirty = true;
    bleeding.dirty = true;
    notes.dirty = true;
    return notes.Count() == NotePages;
}

}  // namespace lunara::bench
