#pragma once

// What the diary shows of one day: the colour and the marks of its item cells, and its text. A pure
// function of the data set, the day and the items chosen; the pictures are named by resource id.

#include <array>
#include <cstdint>

#include "platform/win32.h"
#include "resources/ids.h"

namespace lunara {

class UserData;

/// The items of a row, in the order of their cells. Each is a bit of the show flags.
enum DiaryShowFlag : std::uint32_t {
    DiaryShowNotes = 1,
    DiaryShowBleeding = 2,
    DiaryShowPeriod = 4,
    DiaryShowOvulation = 8,
    DiaryShowPregnancy = 16,
};
inline constexpr std::uint32_t AllDiaryItems = 31;
inline constexpr int MaxDiaryItems = 5;

/// Pictures of the cells; `NoPicture` draws none.
enum DiaryPicture : UINT {
    NoPicture = 0,
    PictureForecast = IDB_MARK_FORECAST,    // overlay: expected, not recorded
    PictureRecorded = IDB_MARK_RECORDED,    // lies on the item's colour
    PictureDiscarded = IDB_MARK_DISCARDED,  // overlay: day of a period that is not counted
    PictureNote = IDB_MARK_NOTE,            // overlay: the day has a note
};

struct DiaryCell {
    COLORREF color;
    DiaryPicture bitmap;
    DiaryPicture overlay;
};

inline constexpr int DiaryTextCapacity = 128;

struct DiaryRow {
    /// As many as there are items shown.
    std::array<DiaryCell, MaxDiaryItems> cells;
    /// The date, a line feed and the status text; empty when there is no status text.
    std::array<WCHAR, DiaryTextCapacity> text;
};

/// How many items the show flags hold, 0..5.
int CountDiaryItems(std::uint32_t showFlags);

/// The item of cell `column` (0-based): the (column + 1)-th bit set, counted from bit 1 upwards; 0
/// when there are fewer.
std::uint32_t DiaryItemAt(std::uint32_t showFlags, int column);

/// Which status texts go with the items shown.
std::uint32_t DiaryStatusMask(std::uint32_t showFlags);

/// The cell of one item for `day`, which is past, present or future as seen from `today`.
DiaryCell FillDiaryCell(const UserData& data, DiaryShowFlag item, const SYSTEMTIME& day,
                        const SYSTEMTIME& today);

DiaryRow FillDiaryRow(const UserData& data, std::uint32_t showFlags, const SYSTEMTIME& day,
                      const SYSTEMTIME& today);

}  // namespace lunara
