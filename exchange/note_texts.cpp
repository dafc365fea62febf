#include "exchange/note_texts.h"

#include <vector>

namespace lunara {

std::map<DateKey, WideString> NoteTexts(const NotePageList& pages) {
    std::map<DateKey, WideString> texts;
    for (std::int32_t first = 0; first < pages.Count();) {
        const DateKey date = pages.At(first).date;
        WideString text;
        std::int32_t index = first;
        for (; index < pages.Count() && pages.At(index).date == date; ++index) {
            text.append(pages.At(index).text, NotePageUnits);
        }
        // The last unit of the last page always reads as terminator, as in NotePageList::CopyText.
        text.back() = 0;
        text.resize(text.find(WCHAR{0}));
        // A file may hold two groups of pages for one day. The first one is the day's note, and
        // emplace keeps it.
        texts.emplace(date, std::move(text));
        first = index;
    }
    return texts;
}

bool ReplaceNotes(NotePageList& pages, const std::map<DateKey, WideString>& texts) {
    std::vector<NotePage> kept;
    kept.reserve(static_cast<std::size_t>(pages.Count()));
    for (const NotePage& page : pages) {
        if (texts.count(page.date) == 0) {
            kept.push_back(page);
        }
    }
    pages.Clear();
    pages.dirty = true;
    for (const NotePage& page : kept) {
        if (pages.SetAt(pages.Count(), page) == 0) {
            return false;
        }
    }
    for (const auto& [date, text] : texts) {
        if (pages.AppendText(date, text.c_str(), static_cast<std::int32_t>(text.size())) == 0) {
            return false;
        }
    }
    return true;
}

}  // namespace lunara
