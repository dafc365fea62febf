#include "tests/driver/steps.h"

#include <utility>

#include "tests/driver/wait.h"

namespace lunara::test {

bool TypeInto(Program& program, HWND field, const std::wstring& text) {
    if (!program.Click(field) ||
        !program.Settle()) {  // a message sent before would overtake the click
        return false;
    }
    ::SendMessageW(field, EM_SETSEL, 0, -1);
    program.Press(VK_DELETE);
    program.Type(text);
    // A password field does not give its text to another process; its length has to do.
    const bool secret = (::GetWindowLongPtrW(field, GWL_STYLE) & ES_PASSWORD) != 0;
    return WaitFor([&] {
        return secret ? ::SendMessageW(field, WM_GETTEXTLENGTH, 0, 0) ==
                            static_cast<LRESULT>(text.size())
                      : Program::TextOf(field) == text;
    });
}

void TapCell(Program& program, int row, int column) {
    const LONG side = program.AskRow(0, 5).height;
    program.ClickAt(program.Agenda(), {side * column + side / 2, side * row + side / 2});
}

HWND OpenNote(Program& program, int row) {
    TapCell(program, row, 0);
    return program.WaitForDialog(L"Notes");
}

bool WriteNote(Program& program, int row, const std::wstring& text) {
    const HWND dialog = OpenNote(program, row);
    return dialog != nullptr && TypeInto(program, ::GetDlgItem(dialog, ControlNoteText), text) &&
           program.Leave(dialog, ControlOk) && program.Settle();
}

void KeepWhenStill(Program& program, const WCHAR* name) {
    constexpr int Alike = 12;
    RECT screen{};
    ::GetWindowRect(::GetDesktopWindow(), &screen);
    Picture before;
    int alike = 0;
    WaitFor([&] {
        Picture now = Picture::OfScreen(screen);
        alike = now == before ? alike + 1 : 0;
        before = std::move(now);
        return alike == Alike;
    });
    program.Keep(name);
}

std::wstring AnswerBox(Program& program, const WCHAR* title, int button) {
    const HWND box = program.WaitForDialog(title);
    if (box == nullptr) {
        return L"";
    }
    std::wstring text = Program::BoxText(box);
    program.Leave(box, button);
    return text;
}

}  // namespace lunara::test
