#pragma once

// What the tests of backup and of restore start from: a sample diary and no backups.

#include <string>

#include "tests/e2e/backups.h"
#include "tests/e2e/fixture.h"
#include "tests/e2e/menus.h"
#include "tests/e2e/steps.h"
#include "tests/e2e/wait.h"

namespace lunara::e2e {

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

    /// A diary of the companion's under that password, as a backup.
    void MakeSampleBackup(const std::wstring& name, const std::wstring& password) {
        ASSERT_EQ(folder
                      .RunCompanion(L"sample \"" + BackupFolder(name) + L"\" --today " +
                                        IsoDate(AddDays(Today, -90)),
                                    password)
                      .exitCode,
                  0u);
    }

    /// Backs up and reads what is said of it.
    static std::wstring Backup(Program& program, const std::wstring& name, bool saveFirst = true) {
        return BeginBackup(program, name, saveFirst) ? AnswerBox(program, L"Message") : L"";
    }

    /// The sign-in that asks for the password once more.
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

    /// The open sign-in refuses that password.
    static void ExpectWrong(Program& program, const std::wstring& password) {
        ASSERT_TRUE(program.EnterUser(User, password));
        EXPECT_EQ(AnswerBox(program, L"Warning"), L"User/Password invalid");
        EXPECT_NE(program.FindDialog(L"Login user"), nullptr);
    }

    /// A wrong answer to the question is refused.
    static void ExpectRefusal(Program& program, const std::wstring& password) {
        ASSERT_NE(PasswordQuestion(program), nullptr);
        ExpectWrong(program, password);
    }

    /// Ends it by its menu. It may ask before.
    static void Leave(Program& program) { ASSERT_TRUE(ChooseFromMenu(program, CommandExit)); }

    static ::testing::AssertionResult HasEnded(Program& program) {
        if (!program.WaitForEnd()) {
            return ::testing::AssertionFailure();
        }
        return program.ExitCode() == 0
                   ? ::testing::AssertionSuccess()
                   : ::testing::AssertionFailure() << "exit code " << program.ExitCode();
    }

    static std::wstring NoteOf(Program& program, int row) {
        const HWND dialog = OpenNote(program, row);
        std::wstring text = Program::TextOf(::GetDlgItem(dialog, ControlNoteText));
        program.Leave(dialog, ControlCancel);
        return text;
    }

    /// What the system says of an error, on one line.
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

    /// Whether that is among the words of a box.
    static ::testing::AssertionResult Says(const std::wstring& box, const std::wstring& words) {
        return (box.find(words) != std::wstring::npos ? ::testing::AssertionSuccess()
                                                      : ::testing::AssertionFailure())
               << ToUtf8(box);
    }
};

}  // namespace lunara::e2e
