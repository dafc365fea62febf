#pragma once

// The base of the tests of backup and restore, which begin with a sample diary and no backups.

#include <string>

#include "tests/driver/menus.h"
#include "tests/driver/steps.h"
#include "tests/driver/wait.h"
#include "tests/e2e/backups.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {

inline constexpr WCHAR User[] = L"Anna";
inline constexpr WCHAR OtherPassword[] = L"neap tide";
inline constexpr WCHAR OfferedName[] = L"05-Mar-2006 12-00";
inline constexpr WCHAR LeaveQuestion[] = L"Leave without saving your last entries?";
inline constexpr WCHAR RestoreQuestion[] = L"Restore from backup and loose current data?";

class BackupTest : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        ForgetBackups();
        MakeSampleDiary(User);
    }

    static std::wstring BackupFolder(const std::wstring& name) {
        return BackupRoot() + L"\\" + User + L"\\" + name;
    }
    std::wstring UserFile(const WCHAR* name) { return folder.UserFolder(User) + L"\\" + name; }

    /// Puts an older sample diary, under that password, where the backup of that name belongs.
    void MakeSampleBackup(const std::wstring& name, const std::wstring& password) {
        ASSERT_TRUE(folder.MakeSampleDiary(BackupFolder(name), password, AddDays(Today, -90)));
    }

    /// Makes a backup and closes the box at its end. The text of the box; empty when none came.
    static std::wstring MakeBackup(Program& program, const std::wstring& name,
                                   bool saveFirst = true) {
        return BeginBackup(program, name, saveFirst) ? AnswerBox(program, L"Message") : L"";
    }

    /// Waits for the sign-in in which the user cannot be changed: it asks for the password again.
    static HWND PasswordQuestion(Program& program) {
        const HWND dialog = program.WaitForDialog(L"Login user");
        const HWND name = ::GetDlgItem(dialog, ControlUserName);
        EXPECT_EQ(Program::TextOf(name), User);
        EXPECT_NE(::GetWindowLongPtrW(name, GWL_STYLE) & ES_READONLY, 0);
        return dialog;
    }

    static bool GivePassword(Program& program, const std::wstring& password) {
        return PasswordQuestion(program) != nullptr && program.EnterUser(User, password);
    }

    /// The open sign-in refuses that password and stays open.
    static void ExpectWrong(Program& program, const std::wstring& password) {
        ASSERT_TRUE(program.EnterUser(User, password));
        EXPECT_EQ(AnswerBox(program, L"Warning"), L"User/Password invalid");
        EXPECT_NE(program.FindDialog(L"Login user"), nullptr);
    }

    /// The password is asked again, and that one is refused.
    static void ExpectRefusal(Program& program, const std::wstring& password) {
        ASSERT_NE(PasswordQuestion(program), nullptr);
        ExpectWrong(program, password);
    }

    /// Chooses Exit from the menu. The program may ask before it ends.
    static void Leave(Program& program) { ASSERT_TRUE(ChooseFromMenu(program, CommandExit)); }

    /// Waits until the process ends, which must be with exit code 0.
    static testing::AssertionResult HasEnded(Program& program) {
        if (!program.WaitForEnd()) {
            return testing::AssertionFailure();
        }
        return program.ExitCode() == 0
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << "exit code " << program.ExitCode();
    }

    /// The note in that row, as its dialog shows it.
    static std::wstring NoteOf(Program& program, int row) {
        const HWND dialog = OpenNote(program, row);
        std::wstring text = Program::TextOf(::GetDlgItem(dialog, ControlNoteText));
        program.Leave(dialog, ControlCancel);
        return text;
    }

    /// The first line of the system's message for an error code.
    static std::wstring SystemText(DWORD error) {
        std::array<WCHAR, 256> text{};
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                         0, text.data(), static_cast<DWORD>(text.size()), nullptr);
        const std::wstring_view said = text.data();
        return std::wstring(said.substr(0, said.find_first_of(L"\r\n")));
    }

    static bool Contains(const std::string& text, const char* part) {
        return text.find(part) != std::string::npos;
    }

    /// Whether the text of a box contains these words.
    static testing::AssertionResult Says(const std::wstring& box, const std::wstring& words) {
        return (box.find(words) != std::wstring::npos ? testing::AssertionSuccess()
                                                      : testing::AssertionFailure())
               << ToUtf8(box);
    }
};

}  // namespace lunara::test
