#include "views/diary_row.h"

#include <bit>
#include <memory>

#include "cycle/day_status.h"
#include "cycle/predictor.h"
#include "diary/user_data.h"
#include "platform/text.h"
#include "views/color_blend.h"

namespace lunara {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF BleedingColor = RGB(0, 0, 255);
constexpr COLORREF OvulationColor = RGB(255, 128, 0);
constexpr COLORREF PregnancyColor = RGB(0, 255, 0);

/// Turns the recorded and expected levels 0..3 into 0..1.
constexpr float LevelFraction = 0.33333334F;

/// Status texts that belong to no item alone: pregnancy alerts and the impossible prediction.
constexpr std::uint32_t AlertBits = 0x01E00000;
constexpr std::uint32_t PeriodBits = 0x000001FF;
constexpr std::uint32_t PossibleOvulationBits = 0x00007800;
constexpr std::uint32_t AllCycleBits = 0x00007FFF;
constexpr std::uint32_t PregnancyBits = 0x001F1000;

COLORREF NoteColor(std::int32_t flags) {
    switch (flags & (NoteFlagCramps | NoteFlagPms)) {
        case NoteFlagCramps | NoteFlagPms:
            return Red;
        case NoteFlagPms:
            return RGB(255, 64, 64);
        case NoteFlagCramps:
            return RGB(255, 128, 128);
        default:
            return White;
    }
}

/// The mark of a bleeding day that is only expected, or belongs to a period that does not count.
DiaryPicture DateMark(const UserData& data, const SYSTEMTIME& day, const SYSTEMTIME& today) {
    DiaryPicture mark = NoPicture;
    // Days are compared by year, month and day: the two dates come from different sources.
    const bool isFuture = IsDateAfter(day, today) != 0;
    const bool isPast = IsDateBefore(day, today) != 0;
    const bool isToday = !isFuture && !isPast;
    if (isFuture || (isToday && !data.Prediction().todayIsBleeding)) {
        mark = PictureForecast;
    }
    if (isPast && IsBleedingDayCounted(data, day) == 0) {
        mark = PictureDiscarded;
    }
    return mark;
}

/// Ovulation and pregnancy: expected as soon as the day lies in the cycle that is still open.
DiaryPicture OpenCycleMark(const UserData& data, const SYSTEMTIME& day) {
    return IsDateAfter(day, data.LastValidPeriodStart()) != 0 ? PictureForecast : NoPicture;
}

}  // namespace

int CountDiaryItems(std::uint32_t showFlags) { return std::popcount(showFlags & AllDiaryItems); }

std::uint32_t DiaryItemAt(std::uint32_t showFlags, int column) {
    int before = 0;
    for (std::uint32_t item = DiaryShowNotes; item <= DiaryShowPregnancy; item <<= 1) {
        if ((showFlags & item) != 0 && before++ == column) {
            return item;
        }
    }
    return 0;
}

std::uint32_t DiaryStatusMask(std::uint32_t showFlags) {
    const bool showsPeriod = (showFlags & (DiaryShowBleeding | DiaryShowPeriod)) != 0;
    const bool showsOvulation = (showFlags & DiaryShowOvulation) != 0;
    std::uint32_t mask = AlertBits;
    if (showsPeriod && showsOvulation) {
        // The first two texts of a past ovulation (bits 9 and 10) come only when both groups are
        // shown, not with ovulation alone.
        mask |= AllCycleBits;
    } else if (showsPeriod) {
        mask |= PeriodBits;
    } else if (showsOvulation) {
        mask |= PossibleOvulationBits;
    }
    if ((showFlags & DiaryShowPregnancy) != 0) {
        // Bit 12 may be there already, so the bits are united, not summed.
        mask |= PregnancyBits;
    }
    return mask;
}

DiaryCell FillDiaryCell(const UserData& data, DiaryShowFlag item, const SYSTEMTIME& day,
                        const SYSTEMTIME& today) {
    DiaryCell cell{White, NoPicture, NoPicture};
    switch (item) {
        case DiaryShowNotes:
            cell.color = NoteColor(data.GetNoteFlags(&day));
            if (std::unique_ptr<WCHAR[]>(data.GetNoteText(&day))) {
                cell.overlay = PictureNote;
            }
            break;
        case DiaryShowBleeding:
            cell.color =
                BlendColor(BleedingColor, White, GetBleedingLevel(data, day) * LevelFraction);
            if (cell.color != White) {
                cell.bitmap = PictureRecorded;
                cell.overlay = DateMark(data, day, today);
            }
            break;
        case DiaryShowPeriod:
            cell.color = BlendColor(BleedingColor, White, GetPeriodProbability(data, day));
            if (cell.color != White) {
                cell.overlay = DateMark(data, day, today);
            }
            break;
        case DiaryShowOvulation:
            cell.color = BlendColor(OvulationColor, White, GetOvulationProbability(data, day));
            if (cell.color != White) {
                cell.overlay = OpenCycleMark(data, day);
            }
            break;
        case DiaryShowPregnancy:
            cell.color = BlendColor(PregnancyColor, White, GetPregnancyProbability(data, day));
            if (cell.color != White) {
                cell.overlay = OpenCycleMark(data, day);
            }
            break;
    }
    return cell;
}

DiaryRow FillDiaryRow(const UserData& data, std::uint32_t showFlags, const SYSTEMTIME& day,
                      const SYSTEMTIME& today) {
    DiaryRow row{};
    const int count = CountDiaryItems(showFlags);
    for (int column = 0; column < count; ++column) {
        const auto item = static_cast<DiaryShowFlag>(DiaryItemAt(showFlags, column));
        row.cells[static_cast<std::size_t>(column)] = FillDiaryCell(data, item, day, today);
    }
    std::array<WCHAR, DiaryTextCapacity> status{};
    if (GetDayStatusText(data, day, status.data(), DiaryTextCapacity, DiaryStatusMask(showFlags)) !=
        0) {
        std::array<WCHAR, DiaryTextCapacity> date{};
        FormatMonthDay(day, date.data(), DiaryTextCapacity);
        const WideString text = WideString(date.data()).append(TEXT("\n")).append(status.data());
        CopyText(row.text.data(), row.text.size(), text);
    }
    return row;
}

}  // namespace lunara
