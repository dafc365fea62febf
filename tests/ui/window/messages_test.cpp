#include "window/messages.h"

#include <array>

#include "tests/ui/ui_test.h"
#include "window/window.h"

namespace lunara::test {
namespace {

constexpr UINT FirstWarning = 50001;

class Messages : public UiTest {
  protected:
    StandInMainWindow mainWindow;
};

struct IdAndText {
    UINT id;
    const WCHAR* text;
};

constexpr IdAndText ErrorTexts[] = {
    {57344, TEXT("The file does not exist")},
    {57345, TEXT("Not a valid Lunara data file")},
    {57346, TEXT("Data file requires new version of Lunara")},
    {57347, TEXT("Data file is corupted or wrong type")},
    {57348, TEXT("User/Password invalid")},
    {57350, TEXT("Bleeding entry for the period exists!")},
    {57351, TEXT("Failed to change date!")},
    {57352, TEXT("Failed to change value!")},
    {57353, TEXT("Backup is done!")},
    {57354, TEXT("Backup fails!")},
    {57355, TEXT("Cannot create backup directory!")},
    {57356, TEXT("Overwrite current data?")},
    {57357, TEXT("Restore from backup and loose current data?")},
    {57358, TEXT("There are no backups!")},
    {57359, TEXT("Restore is done!")},
};

TEST_F(Messages, EveryErrorIdHasItsText) {
    ScriptedWindow owner;
    ASSERT_EQ(owner.Make(), 1);
    for (const IdAndText& row : ErrorTexts) {
        SCOPED_TRACE(row.id);
        messages.boxes.clear();
        EXPECT_EQ(ShowMessage(owner.Handle(), row.id, CaptionWarning, MB_ICONEXCLAMATION), IDOK);
        ASSERT_EQ(messages.boxes.size(), 1U);
        EXPECT_EQ(messages.boxes[0].text, row.text);
        EXPECT_EQ(messages.boxes[0].caption, TEXT("Warning"));
        EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
        EXPECT_EQ(messages.boxes[0].owner, owner.Handle());
    }
}

TEST_F(Messages, TheResultIsTheButtonPressed) {
    messages.answers = {IDYES, IDNO, IDYES};
    EXPECT_EQ(ShowMessage(nullptr, 57356, CaptionMessage, MB_YESNO), IDYES);
    EXPECT_EQ(ShowMessage(nullptr, 57356, CaptionMessage, MB_YESNO), IDNO);
    EXPECT_EQ(ShowAppMessage(57356, MB_YESNO), IDYES);
}

TEST_F(Messages, AnIdWithoutTextShowsNothing) {
    EXPECT_EQ(ShowMessage(nullptr, 57349, CaptionWarning, MB_OK), 0);
    EXPECT_EQ(ShowMessage(nullptr, 0, CaptionWarning, MB_OK), 0);
    EXPECT_EQ(ShowAppMessage(57349, MB_OK), 0);
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(Messages, AppMessagesAreOwnedByTheMainWindowAndCarryTheProgramsTitle) {
    EXPECT_EQ(ShowAppMessage(57353, MB_ICONINFORMATION), IDOK);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, TEXT("Backup is done!"));
    EXPECT_EQ(messages.boxes[0].caption, TEXT("Lunara"));
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONINFORMATION));
    EXPECT_EQ(messages.boxes[0].owner, mainWindow.Handle());
}

TEST_F(Messages, NoFlagBitsShowNoBox) {
    EXPECT_EQ(ShowFlagMessages(FirstWarning, 0, MB_OK), 1);
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(Messages, FlagBitsWithoutTextsShowNoBox) {
    EXPECT_EQ(ShowFlagMessages(57349, 1, MB_OK), 1);
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(Messages, BitsZeroAndTwoShowTwoLines) {
    messages.answers = {IDNO};
    EXPECT_EQ(ShowFlagMessages(FirstWarning, 0b101, MB_YESNO | MB_ICONEXCLAMATION), IDNO);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text,
              TEXT("Insufficient statistical data. \nToo few valid cycles for stable "
                   "prediction. "));
    EXPECT_EQ(messages.boxes[0].caption, TEXT("Lunara"));
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_YESNO | MB_ICONEXCLAMATION));
    EXPECT_EQ(messages.boxes[0].owner, mainWindow.Handle());
}

TEST_F(Messages, OneBitShowsOneLineWithoutALineBreak) {
    ShowFlagMessages(FirstWarning, 0b10, MB_OK);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, TEXT("No statistical data. "));
}

TEST_F(Messages, BitsWithoutTextLeaveNoEmptyLine) {
    // Bit 0 stands for 57348, bit 1 for 57349, which has no text, bit 2 for 57350.
    ShowFlagMessages(57348, 0b111, MB_OK);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text,
              TEXT("User/Password invalid\nBleeding entry for the period exists!"));
    // The last bit without a text: 57359 is the highest id that has one.
    ShowFlagMessages(57359, 0b11, MB_OK);
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_EQ(messages.boxes[1].text, TEXT("Restore is done!"));
}

TEST_F(Messages, AllBitsShowEveryTextInBitOrderUpToSixtyThreeUnits) {
    std::wstring expected;
    for (UINT bit = 0; bit < 32; ++bit) {
        std::array<WCHAR, 64> text{};
        if (::LoadStringW(AppInstance(), FirstWarning + bit, text.data(), 64) > 0) {
            expected += (expected.empty() ? TEXT("") : TEXT("\n"));
            expected += text.data();
        }
    }
    ShowFlagMessages(FirstWarning, 0xFFFFFFFF, MB_OK);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, expected);
}

TEST_F(Messages, ASystemErrorShowsTheSystemsText) {
    std::array<WCHAR, 512> expected{};
    ASSERT_GT(::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                               ERROR_FILE_NOT_FOUND, 0, expected.data(),
                               static_cast<DWORD>(expected.size()), nullptr),
              0U);
    ::SetLastError(ERROR_FILE_NOT_FOUND);
    ShowSystemError();
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, expected.data());
    EXPECT_EQ(messages.boxes[0].caption, TEXT("Error"));
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONINFORMATION));
}

TEST_F(Messages, ASystemErrorWithoutTextShowsNothing) {
    ::SetLastError(0x20001234);  // bit 29 is reserved for applications: the system has no such code
    ShowSystemError();
    EXPECT_TRUE(messages.boxes.empty());
}

/// Presses "No" in the program's message box as soon as it is up, and stops the timer.
void CALLBACK AnswerNo(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = ::FindWindowW(TEXT("#32770"), TEXT("Lunara"));
    if (box != nullptr) {
        ::KillTimer(nullptr, timer);
        ::PostMessageW(box, WM_COMMAND, IDNO, 0);
    }
}

TEST_F(Messages, WithoutARecorderTheUserIsAsked) {
    SetMessageRecorder(nullptr);
    ::SetTimer(nullptr, 0, 10, &AnswerNo);
    EXPECT_EQ(ShowAppMessage(57356, MB_YESNO), IDNO);
    EXPECT_TRUE(messages.boxes.empty());
}

}  // namespace
}  // namespace lunara::test
