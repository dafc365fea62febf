#include "tests/driver/input.h"

#include <vector>

namespace lunara::test {
namespace {

void Send(std::vector<INPUT>& inputs) {
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

}  // namespace

INPUT KeyInput(WORD key, WORD scan, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    return input;
}

INPUT MouseInput(DWORD button, POINT screen) {
    constexpr LONG Span = 65536;  // absolute coordinates: the screen's width and height in units
    const LONG width = ::GetSystemMetrics(SM_CXSCREEN);
    const LONG height = ::GetSystemMetrics(SM_CYSCREEN);
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = (screen.x * Span + width - 1) / width;
    input.mi.dy = (screen.y * Span + height - 1) / height;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | button;
    return input;
}

void PressWith(std::initializer_list<WORD> held, WORD key) {
    std::vector<INPUT> inputs;
    for (const WORD modifier : held) {
        inputs.push_back(KeyInput(modifier, 0, 0));
    }
    inputs.push_back(KeyInput(key, 0, 0));
    inputs.push_back(KeyInput(key, 0, KEYEVENTF_KEYUP));
    for (const WORD modifier : held) {
        inputs.push_back(KeyInput(modifier, 0, KEYEVENTF_KEYUP));
    }
    Send(inputs);
}

void DragOnScreen(POINT from, POINT to, int steps) {
    std::vector<INPUT> inputs = {MouseInput(MOUSEEVENTF_LEFTDOWN, from)};
    for (int step = 1; step <= steps; ++step) {
        inputs.push_back(MouseInput(
            0, {from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps}));
    }
    inputs.push_back(MouseInput(MOUSEEVENTF_LEFTUP, to));
    Send(inputs);
}

void TurnWheel(POINT screen, int notches) {
    std::vector<INPUT> inputs = {MouseInput(MOUSEEVENTF_WHEEL, screen)};
    inputs.front().mi.mouseData = static_cast<DWORD>(notches) * WHEEL_DELTA;
    Send(inputs);
}

}  // namespace lunara::test
