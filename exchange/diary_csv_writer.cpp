#include <cstdlib>

#include "diary/note_texts.h"
#include "exchange/diary_csv.h"
#include "exchange/iso_date.h"

namespace lunara {
namespace {

struct DayRecords {
    std::optional<std::int32_t> bleeding;
    std::optional<std::int32_t> temperature;
    std::int32_t noteFlags = 0;
    WideString note;
};

std::map<DateKey, DayRecords> CollectDays(const UserData& data) {
    std::map<DateKey, DayRecords> days;
    for (const DayValue& record : data.Bleeding()) {
        days[record.date].bleeding = record.value;
    }
    for (const DayValue& record : data.Temperature()) {
        days[record.date].temperature = record.value;
    }
    for (const DayValue& record : data.NoteFlags()) {
        days[record.date].noteFlags = record.value;
    }
    for (auto& [date, text] : NoteTexts(data.NotePages())) {
        days[date].note = text;
    }
    return days;
}

}  // namespace

std::string TemperatureText(std::int32_t hundredths) {
    const std::int64_t size = std::abs(std::int64_t{hundredths});
    std::string digits = std::to_string(size);
    if (digits.size() < 3) {
        digits.insert(0, 3 - digits.size(), '0');
    }
    digits.insert(digits.size() - 2, 1, '.');
    return hundredths < 0 ? "-" + digits : digits;
}

std::string WriteDiaryCsv(const UserData& data) {
    std::string text = "date,bleeding,temperature_f,cramps,pms,note\r\n";
    for (const auto& [date, day] : CollectDays(data)) {
        text.append(IsoDate(date)).append(",");
        text.append(day.bleeding ? std::to_string(*day.bleeding) : "").append(",");
        text.append(day.temperature ? TemperatureText(*day.temperature) : "").append(",");
        text.append((day.noteFlags & NoteFlagCramps) != 0 ? "1," : ",");
        text.append((day.noteFlags & NoteFlagPms) != 0 ? "1," : ",");
        text.append(QuoteCsvCell(ToUtf8(day.note))).append("\r\n");
    }
    return text;
}

}  // namespace lunara
