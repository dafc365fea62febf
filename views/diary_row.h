#pragma once

// What the diary shows of one day: the colour and the marks of its item cells, and its text,
// computed from the data set, the day and the items shown. Records and results are only read, but
// looking up a day sorts the list it is looked up in, which is why the data set is not const.
// Needs no window; pictures are named by resource id.

#include <array>
#include <cstdint>

#include "platform/win32.h"
#include "resources/ids.h"

namespace lunara {

class UserData;

/// The items of a row, as bits of the show flags. In ascending order they are the cells from left
/// to right.
enum DiaryShowFlag : std::uint32_t {
    DiaryShowNotes = 1,
    DiaryShowBleeding = 2,
    DiaryShowPeriod = 4,
    DiaryShowOvulation = 8,
    DiaryShowPregnancy = 16,
};
inline constexpr std::uint32_t AllDiaryItems =
    DiaryShowNotes | DiaryShowBleeding | DiaryShowPeriod | DiaryShowOvulation | DiaryShowPregnancy;
inline constexpr int MaxDiaryItems = 5;

/// A picture in a cell, by resource id; `NoPicture` draws none.
enum DiaryPicture : UINT {
    NoPicture = 0,
    PictureForecast = IDB_MARK_FORECAST,    // overlay: predicted, not recorded
    PictureRecorded = IDB_MARK_RECORDED,    // bitmap: the item's colour shows in its shape
    PictureDiscarded = IDB_MARK_DISCARDED,  // overlay: the day's period is discarded
    PictureNote = IDB_MARK_NOTE,            // overlay: the day has a note
};

/// One item of a day. The agenda draws `bitmap` on the colour and `overlay` on both.
struct DiaryCell {
    COLORREF color;
    DiaryPicture bitmap;
    DiaryPicture overlay;
};

/// UTF-16 units of a row's text, terminator included.
inline constexpr int DiaryTextCapacity = 128;

struct DiaryRow {
    /// The first `CountDiaryItems` cells are filled, in the order of the items; the rest is zero.
    std::array<DiaryCell, MaxDiaryItems> cells;
    /// The date, a line feed and the status text, cut off at the capacity; empty without a status
    /// text.
    std::array<WCHAR, DiaryTextCapacity> text;
};

/// The number of items shown, 0..MaxDiaryItems; other bits are ignored.
int CountDiaryItems(std::uint32_t showFlags);

/// The item in cell `column` (0-based): the (column + 1)-th of the items shown. 0 when there are
/// fewer, or `column` is negative.
std::uint32_t DiaryItemAt(std::uint32_t showFlags, int column);

/// The day status bits (cycle/day_status.h) whose texts go with the items shown.
std::uint32_t DiaryStatusMask(std::uint32_t showFlags);

/// The cell of one item for `day`. Past and future, which the marks tell apart, are relative to
/// `today`.
DiaryCell FillDiaryCell(const UserData& data, DiaryShowFlag item, const SYSTEMTIME& day,
                        const SYSTEMTIME& today);

/// The cells of all items shown, and the text, for `day`.
DiaryRow FillDiaryRow(const UserData& data, std::uint32_t showFlags, const SYSTEMTIME& day,
                      const SYSTEMTIME& today);

}  // namespace lunara
