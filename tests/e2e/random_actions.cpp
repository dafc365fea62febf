// The single mouse and keyboard actions of a random user (random_user.h).

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "tests/driver/input.h"
#include "tests/driver/menus.h"
#include "tests/driver/steps.h"
#include "tests/e2e/random_user.h"

namespace lunara::test {
namespace {

/// "what x,y"
std::string At(const char* what, POINT point) {
    return std::string(what) + " " + std::to_string(point.x) + "," + std::to_string(point.y);
}

std::string Key(const char* what, WORD key) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s 0x%02x", what, static_cast<unsigned>(key));
    return text.data();
}

BOOL CALLBACK AddIfUsable(HWND window, LPARAM lParam) {
    if (::IsWindowVisible(window) != 0 && ::IsWindowEnabled(window) != 0) {
        reinterpret_cast<std::vector<HWND>*>(lParam)->push_back(window);
    }
    return TRUE;
}

}  // namespace

void RandomUser::Tap(HWND window) {
    const POINT point = PointIn(window);
    Log(At("tap", point));
    Program::ClickScreen(point);
}

void RandomUser::TapAnyControl(HWND dialog) {
    std::vector<HWND> controls;
    ::EnumChildWindows(dialog, AddIfUsable, reinterpret_cast<LPARAM>(&controls));
    if (controls.empty()) {
        Tap(dialog);
        return;
    }
    const HWND control = AnyOf(controls);
    const POINT point = PointIn(control);
    Log(At(("tap control " + std::to_string(::GetDlgCtrlID(control))).c_str(), point));
    Program::ClickScreen(point);
}

void RandomUser::PressAnyKey() {
    static constexpr std::array<WORD, 34> Keys = {
        VK_UP,  VK_DOWN,      VK_LEFT,       VK_RIGHT,  VK_PRIOR,    VK_NEXT,   VK_HOME,
        VK_END, VK_TAB,       VK_RETURN,     VK_ESCAPE, VK_SPACE,    VK_BACK,   VK_DELETE,
        VK_F1,  VK_F4,        VK_F5,         VK_F10,    VK_APPS,     VK_INSERT, 'A',
        'B',    'L',          'U',           'N',       'Y',         '1',       '5',
        '9',    VK_OEM_MINUS, VK_OEM_PERIOD, VK_ADD,    VK_SUBTRACT, VK_OEM_5};
    const WORD key = AnyOf(Keys);
    Log(Key("key", key));
    program->Press(key);
}

void RandomUser::PressHarmlessKey() {
    // Keys that neither confirm nor cancel a dialog.
    static constexpr std::array<WORD, 14> Keys = {VK_UP,  VK_DOWN, VK_LEFT, VK_RIGHT,    VK_HOME,
                                                  VK_END, VK_TAB,  VK_BACK, VK_F1,       VK_F5,
                                                  'A',    'U',     '1',     VK_OEM_MINUS};
    const WORD key = AnyOf(Keys);
    Log(Key("key", key));
    program->Press(key);
}

void RandomUser::PressAnyCombination() {
    static constexpr std::array<WORD, 12> WithControl = {
        'A', 'C', 'V', 'X', 'Z', VK_HOME, VK_END, VK_TAB, VK_INSERT, VK_LEFT, VK_RIGHT, VK_F6};
    static constexpr std::array<WORD, 12> WithAlt = {VK_MENU, VK_SPACE, VK_DOWN,   VK_UP,
                                                     VK_LEFT, VK_RIGHT, VK_RETURN, VK_BACK,
                                                     VK_F1,   VK_F10,   'T',       'Y'};
    static constexpr std::array<WORD, 6> WithShift = {VK_TAB, VK_LEFT, VK_DOWN,
                                                      VK_END, VK_F10,  VK_DELETE};
    switch (Below(3)) {
        case 0: {
            const WORD key = AnyOf(WithControl);
            Log(Key("Ctrl+", key));
            PressWith({VK_CONTROL}, key);
            break;
        }
        case 1: {
            const WORD key = AnyOf(WithAlt);
            Log(Key("Alt+", key));
            PressWith({VK_MENU}, key);
            break;
        }
        default: {
            const WORD key = AnyOf(WithShift);
            Log(Key("Shift+", key));
            PressWith({VK_SHIFT}, key);
            break;
        }
    }
}

void RandomUser::ChooseAnyCommand() {
    static constexpr std::array<UINT, 16> Commands = {
        CommandAbout,           CommandViewDiary,      CommandViewGraph,     CommandShowNotes,
        CommandShowBleeding,    CommandShowPeriod,     CommandShowOvulation, CommandShowPregnancy,
        CommandShowTemperature, CommandChangePassword, CommandHelp,          CommandHistory,
        CommandBackup,          CommandRestore,        CommandBackup,        CommandRestore};
    // No command while a menu is open: a dialog that opened while the menu has captured the mouse
    // would get no clicks. None while the window is disabled either, as its menu could not be
    // opened.
    if (const std::vector<HWND> menus = OpenMenus(*program); !menus.empty()) {
        Tap(AnyOf(menus));
    } else if (::IsWindowEnabled(program->Main()) != 0) {
        const UINT command = AnyOf(Commands);
        Log("command " + std::to_string(command));
        program->Post(command);
    }
}

void RandomUser::OpenMenu() {
    constexpr LONG InTheFirstButton = 40;
    RECT bar{};
    ::GetWindowRect(program->MenuBar(), &bar);
    Log("open the menu");
    Program::ClickScreen({bar.left + InTheFirstButton, (bar.top + bar.bottom) / 2});
}

POINT RandomUser::PointOnCurve(HWND chart) {
    // In a random column, picks a pixel that differs from those at both sides: part of a marker, of
    // the curve, or of a figure.
    constexpr int Beside = 9;  // px
    const Picture picture = Program::Look(chart);
    const int column = Beside + Below(std::max(1, picture.Width() - 2 * Beside));
    std::vector<int> rows;
    for (int y = 0; y < picture.Height(); ++y) {
        const COLORREF color = picture.At(column, y);
        if (color != picture.At(column - Beside, y) && color != picture.At(column + Beside, y)) {
            rows.push_back(y);
        }
    }
    POINT point{column, rows.empty() ? Below(std::max(1, picture.Height())) : AnyOf(rows)};
    ::ClientToScreen(chart, &point);
    return point;
}

void RandomUser::DragInChart() {
    const HWND graph = program->Graph();
    if (!program->IsOnTop(graph)) {
        DragAnywhere(program->Main());
        return;
    }
    const HWND chart = ::GetDlgItem(graph, GraphChart);
    const HWND value = ::GetDlgItem(graph, GraphValue);
    const std::wstring before = Program::TextOf(value);
    const POINT from = PointOnCurve(chart);
    const POINT to{from.x, PointIn(chart).y};
    Log(At(At("drag in the chart", from).c_str(), to));
    DragOnScreen(from, to, 1 + Below(6));
    if (Settle() && Program::TextOf(value) != before) {
        ++seen["drag in the chart that changes the fields"];
    }
}

void RandomUser::DragThumb() {
    const HWND view = program->IsOnTop(program->Graph()) ? program->Graph() : program->Diary();
    const HWND bar = ::GetDlgItem(view, ControlScrollBar);
    RECT place{};
    ::GetWindowRect(bar, &place);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    ::GetScrollInfo(bar, SB_CTL, &info);
    // Estimates where the thumb is: between the arrows, in proportion to the position.
    const bool upright = place.bottom - place.top > place.right - place.left;
    const LONG arrow = ::GetSystemMetrics(upright ? SM_CYVSCROLL : SM_CXHSCROLL);
    const LONG length = upright ? place.bottom - place.top : place.right - place.left;
    const LONG track = std::max<LONG>(1, length - 3 * arrow);
    const LONG range = std::max<LONG>(1, info.nMax - info.nMin);
    const LONG along = arrow + arrow / 2 + (info.nPos - info.nMin) * track / range;
    const LONG target = arrow + Below(static_cast<int>(track));
    const LONG across = upright ? (place.left + place.right) / 2 : (place.top + place.bottom) / 2;
    const POINT from =
        upright ? POINT{across, place.top + along} : POINT{place.left + along, across};
    const POINT to =
        upright ? POINT{across, place.top + target} : POINT{place.left + target, across};
    Log(At(At("drag the thumb", from).c_str(), to));
    DragOnScreen(from, to, 1 + Below(6));
    if (Settle()) {
        const int position = info.nPos;
        ::GetScrollInfo(bar, SB_CTL, &info);
        seen["drag of the thumb that scrolls"] += info.nPos != position ? 1 : 0;
    }
}

void RandomUser::DragAnywhere(HWND window) {
    const POINT from = PointIn(window);
    const POINT to = PointIn(window);
    Log(At(At("drag", from).c_str(), to));
    DragOnScreen(from, to, 1 + Below(6));
}

void RandomUser::Wheel(HWND window) {
    const POINT point = PointIn(window);
    const int notches = Below(2) == 0 ? 1 + Below(3) : -1 - Below(3);
    Log(At("wheel", point) + " by " + std::to_string(notches));
    TurnWheel(point, notches);
}

}  // namespace lunara::test
