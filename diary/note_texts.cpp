#include "diary/note_texts.h"

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
        // A full last page gives up its last unit to the terminator, as in `CopyText`.
        text.back() = 0;
        text.resize(text.find(WCHAR{0}));
        // A file may hold a day's pages in two places. The first place is the day's note.
        texts.emplace(date, std::move(text));
        first = index;
    }
    return texts;
}

}  // namespace lunara
