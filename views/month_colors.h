#pragma once

#include <array>

#include "platform/win32.h"

namespace lunara {

/// Colours of the months, January first, in the calendar strips of both views.
inline constexpr std::array<COLORREF, 12> MonthColors = {
    RGB(128, 128, 255), RGB(190, 190, 255), RGB(190, 255, 190), RGB(128, 255, 128),
    RGB(255, 255, 128), RGB(255, 255, 0),   RGB(237, 192, 88),  RGB(231, 169, 24),
    RGB(187, 141, 96),  RGB(170, 126, 94),  RGB(146, 146, 163), RGB(0, 128, 192),
};

/// The colour of month 1..12; white for any other number.
constexpr COLORREF MonthColor(WORD month) {
    return month >= 1 && month <= MonthColors.size() ? MonthColors[month - 1] : RGB(255, 255, 255);
}

}  // namespace lunara
