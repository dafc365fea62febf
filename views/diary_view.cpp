#include "views/diary_view.h"

#include <algorithm>

#include "frame/help.h"
#include "frame/settings.h"

namespace lunara {
namespace {

constexpr WCHAR ShowFlagsValue[] = TEXT("DiaryView_ShowFlags");

}  // namespace

bool DiaryView::OnMessage(UINT message, WPARAM, LPARAM, LRESULT* result) {
    switch (message) {
        case WM_CREATE: {
            DWORD stored = 0;
            if (Settings().ReadDword(ShowFlagsValue, stored)) {
                showFlags = stored;
            }
            data.AttachObserver(*this);
            break;
        }
        case WM_DESTROY:
            Settings().WriteDword(ShowFlagsValue, showFlags);
            data.DetachObserver(*this);
            break;
        case WM_HELP:
            StartHelp(TEXT("Lunara.htm#_Calendar_diary"));
            break;
        default:
            return false;
    }
    *result = 0;
    return true;
}

std::uint32_t DiaryView::SetFlag(std::uint32_t flag, bool shown,
                                 void (DiaryListener::*told)(bool)) {
    const std::uint32_t wanted = shown ? showFlags | flag : showFlags & ~flag;
    if (wanted == showFlags) {
        return showFlags;
    }
    if (wanted == 0) {
        return 0;
    }
    showFlags = wanted;
    for (DiaryListener* listener : listeners) {
        (listener->*told)(shown);
    }
    return showFlags;
}

std::uint32_t DiaryView::SetShowNotes(bool shown) {
    return SetFlag(DiaryShowNotes, shown, &DiaryListener::NotesShownChanged);
}

std::uint32_t DiaryView::SetShowBleeding(bool shown) {
    return SetFlag(DiaryShowBleeding, shown, &DiaryListener::BleedingShownChanged);
}

std::uint32_t DiaryView::SetShowPeriod(bool shown) {
    return SetFlag(DiaryShowPeriod, shown, &DiaryListener::PeriodShownChanged);
}

std::uint32_t DiaryView::SetShowOvulation(bool shown) {
    return SetFlag(DiaryShowOvulation, shown, &DiaryListener::OvulationShownChanged);
}

std::uint32_t DiaryView::SetShowPregnancy(bool shown) {
    return SetFlag(DiaryShowPregnancy, shown, &DiaryListener::PregnancyShownChanged);
}

void DiaryView::DetachListener(DiaryListener& listener) { std::erase(listeners, &listener); }

SYSTEMTIME DiaryView::GetCurrentDate() const {
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    return date;
}

void DiaryView::SetCurrentDate(const SYSTEMTIME& date) { data.SetCurrentDate(date); }

}  // namespace lunara
