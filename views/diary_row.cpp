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

/// Scales a recorded or expected level, 0..3, to a share of colour, 0..1.
constexpr float LevelFraction = 0.33333334F;

// Day status bits whose texts a row shows, by the items that bring them in.

/// Shown whatever the items: pregnancy alerts and the impossible prediction.
constexpr std::uint32_t AlertBits = DAY_PREGNANCY_HIGHLY_PROBABLE | DAY_MAY_BE_PREGNANT |
                                    DAY_SEE_DOCTOR | DAY_PREDICTION_IMPOSSIBLE;
constexpr std::uint32_t PeriodBits =
    DAY_CYCLE_START | DAY_CYCLE_LENGTHS | DAY_PERIOD_END | BleedingStatusBits;
/// Deliberately without DAY_OVULATION and DAY_OVULATION_FIRST: AllCycleBits alone has those.
constexpr std::uint32_t PossibleOvulationBits = DAY_OVULATION_END | DAY_OVULATION_POSSIBLE |
                                                DAY_OVULATION_POSSIBLE_FIRST |
                                                DAY_OVULATION_POSSIBLE_LAST;
constexpr std::uint32_t AllCycleBits =
    PeriodBits | DAY_OVULATION | DAY_OVULATION_FIRST | PossibleOvulationBits;
/// Includes the possible ovulation. DAY_PREGNANCY, which is never set, does not belong to it.
constexpr std::uint32_t PregnancyBits = DAY_OVULATION_POSSIBLE | DAY_PREGNANCY_FIRST |
                                        DAY_PREGNANCY_END | DAY_PREGNANCY_POSSIBLE |
                                        DAY_PREGNANCY_POSSIBLE_FIRST | DAY_PREGNANCY_POSSIBLE_LAST;

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

/// The overlay of a bleeding or period cell: predicted, discarded, or none.
DiaryPicture DateMark(const UserData& data, const SYSTEMTIME& day, const SYSTEMTIME& today) {
    DiaryPicture mark = NoPicture;
    // Not IsSameDay: it compares the day of week as well, and the two dates come from different
    // sources.
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

/// The overlay of an ovulation or pregnancy cell: predicted for every day of the open cycle after
/// its first, none before.
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
        // More than the union of the two groups: DAY_OVULATION and DAY_OVULATION_FIRST are shown
        // only when both are, not with ovulation alone.
        mask |= AllCycleBits;
    } else if (showsPeriod) {
        mask |= PeriodBits;
    } else if (showsOvulation) {
        mask |= PossibleOvulationBits;
    }
    if ((showFlags & DiaryShowPregnancy) != 0) {
        // ORed, not added: DAY_OVULATION_POSSIBLE may be in the mask already.
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
