// The notes of a day: opened by a tap on the cell, added, edited, cancelled, deleted, saved.

#include "tests/driver/steps.h"
#include "tests/driver/wait.h"
#include "tests/e2e/expectation.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class Notes : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        WriteNumber(L"CurrentView", ViewDiary);
    }

    static bool TypeText(Program& program, HWND dialog, const std::wstring& text) {
        return TypeInto(program, ::GetDlgItem(dialog, ControlNoteText), text);
    }

    static bool IsChecked(HWND dialog, int box) {
        return ::SendDlgItemMessageW(dialog, box, BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
};

TEST_F(Notes, AreAddedEditedCancelledAndDeleted) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));

    HWND dialog = OpenNote(program, TodaysRow);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, ControlNoteDate)), L"Sun Mar, 05");
    EXPECT_FALSE(IsChecked(dialog, ControlCramps));
    EXPECT_FALSE(IsChecked(dialog, ControlPms));
    program.Click(::GetDlgItem(dialog, ControlCramps));
    ASSERT_TRUE(TypeText(program, dialog, L"Päin, \"dull\" \x263A"));
    program.Keep(L"adding");
    ASSERT_TRUE(program.Leave(dialog, ControlOk));
    ASSERT_TRUE(program.Settle());
    program.Keep(L"added");
    Row row = program.AskRow(TodaysRow, 5);
    EXPECT_EQ(row.cells[0].color, RGB(255, 128, 128));
    EXPECT_NE(row.cells[0].overlay, nullptr);
    EXPECT_TRUE(Expectation::CellLooksLike(Program::Look(program.Agenda()), 0, TodaysRow,
                                           row.height, {RGB(255, 128, 128), 0, 116},
                                           folder.Program()));

    dialog = OpenNote(program, TodaysRow);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, ControlNoteText)), L"Päin, \"dull\" \x263A");
    EXPECT_TRUE(IsChecked(dialog, ControlCramps));
    program.Click(::GetDlgItem(dialog, ControlPms));
    ASSERT_TRUE(TypeText(program, dialog, L"Gone by noon"));
    ASSERT_TRUE(program.Leave(dialog, ControlOk));
    EXPECT_EQ(program.AskRow(TodaysRow, 5).cells[0].color, RGB(255, 0, 0));

    dialog = OpenNote(program, TodaysRow);
    ASSERT_NE(dialog, nullptr);
    program.Click(::GetDlgItem(dialog, ControlCramps));
    ASSERT_TRUE(TypeText(program, dialog, L"Never mind"));
    ASSERT_TRUE(program.Leave(dialog, ControlCancel));
    EXPECT_EQ(program.AskRow(TodaysRow, 5).cells[0].color, RGB(255, 0, 0));

    ASSERT_TRUE(WriteNote(program, TodaysRow - 1, L"To be deleted"));
    EXPECT_NE(program.AskRow(TodaysRow - 1, 5).cells[0].overlay, nullptr);
    ASSERT_TRUE(WriteNote(program, TodaysRow - 1, L""));
    EXPECT_EQ(program.AskRow(TodaysRow - 1, 5).cells[0].overlay, nullptr);

    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + "2006-03-05,,,1,1,Gone by noon\r\n");
}

TEST_F(Notes, AreTakenByAFutureDay) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    const HWND dialog = OpenNote(program, TodaysRow + 5);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, ControlNoteDate)), L"Fri Mar, 10");
    ASSERT_TRUE(TypeText(program, dialog, L"Dentist"));
    ASSERT_TRUE(program.Leave(dialog, ControlOk));
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + "2006-03-10,,,,,Dentist\r\n");
}

TEST_F(Notes, AreNotOpenedByATapOnAnotherCell) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    for (int column = 1; column <= 6; ++column) {
        TapCell(program, TodaysRow, column);
        ASSERT_TRUE(program.Settle());
        EXPECT_EQ(program.FindAnyDialog(), nullptr) << "column " << column;
    }
    EXPECT_TRUE(program.Exit());
}

}  // namespace
}  // namespace lunara::test
