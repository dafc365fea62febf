#include "platform/pocketpc/placement.h"

namespace lunara {

RECT PlaceOf(HWND child) {
    RECT place{};
    ::GetWindowRect(child, &place);
    ::MapWindowPoints(nullptr, ::GetParent(child), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void PutAt(HWND child, const RECT& place) {
    const RECT present = PlaceOf(child);
    if (::EqualRect(&present, &place) != FALSE) {
        return;
    }
    UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_DEFERERASE;
    if (::IsWindowVisible(child) == FALSE) {
        flags |= SWP_NOREDRAW | SWP_NOCOPYBITS;  // showing it will paint all of it
    }
    ::SetWindowPos(child, nullptr, place.left, place.top, place.right - place.left,
                   place.bottom - place.top, flags);
}

}  // namespace lunara
