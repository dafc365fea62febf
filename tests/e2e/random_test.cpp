// Random use: ten thousand random taps, keys, drags, commands and answers. LUNARA_E2E_SEED chooses
// other ones, LUNARA_E2E_ACTIONS another number of them.

#include <array>
#include <cwchar>
#include <iostream>

#include "tests/e2e/backups.h"
#include "tests/e2e/fixture.h"
#include "tests/e2e/random_user.h"

namespace lunara::test {
namespace {

/// Enough that every place of the program is reached; a shorter run need not come to all of them.
constexpr unsigned UsualActions = 10000;

/// A number from an environment variable; `usual` when it is not set.
unsigned FromEnvironment(const WCHAR* name, unsigned usual) {
    std::array<WCHAR, 16> text{};
    const DWORD length =
        ::GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    return length == 0 ? usual : static_cast<unsigned>(std::wcstoul(text.data(), nullptr, 10));
}

class RandomUse : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        ForgetBackups();
        MakeSampleDiary(L"Anna");
        std::cout << "seed " << seed << "\n";
    }

    void TearDown() override {
        for (const auto& [what, count] : user.Seen()) {
            std::cout << count << "  " << what << "\n";
        }
        if (HasFailure()) {
            std::cout << "The last actions:\n" << user.LastActions();
        }
        EndToEnd::TearDown();
    }

    const unsigned seed = FromEnvironment(L"LUNARA_E2E_SEED", 20060305);
    RandomUser user{folder, L"Anna", seed};
};

TEST_F(RandomUse, LeavesTheProgramAliveWithoutLeaksAndTheDiaryReadable) {
    const unsigned actions = FromEnvironment(L"LUNARA_E2E_ACTIONS", UsualActions);
    ASSERT_TRUE(user.Begin());
    for (unsigned action = 0; action < actions; ++action) {
        SCOPED_TRACE("action " + std::to_string(action));
        ASSERT_TRUE(user.Act());
        // Otherwise the run would spend most of its time in the dialogs that are hard to leave.
        if (action % 40 == 39) {
            ASSERT_TRUE(user.PutEverythingAway());
        }
        if (action == actions / 2) {
            user.TheProgram().Keep(L"in-between");
        }
    }
    ASSERT_TRUE(user.PutEverythingAway());
    user.TheProgram().Keep(L"afterwards");
    ASSERT_TRUE(user.End());

    const std::vector<std::wstring> backups = DiaryFoldersBelow(BackupRoot());
    for (const std::wstring& backup : backups) {
        EXPECT_TRUE(user.Loads(backup)) << ToUtf8(backup);
    }
    std::cout << backups.size() << " backups\n";
    if (actions < UsualActions) {
        std::cout << "a short run: which places it reached is not checked\n";
        return;
    }
    // A run that never reached a place has not tested it.
    for (const char* place :
         {"diary", "graph", "menu", "Login user anew", "Login user again", "Notes",
          "Menstrual Period History", "Change password", "About Lunara", "Backup", "Restore",
          "Warning: Restore from backup and l", "Message: Backup is done!", "password changed",
          "wrong password", "end", "drag in the chart that changes the fields",
          "drag of the thumb that scrolls"}) {
        EXPECT_TRUE(user.Seen().contains(place)) << place;
    }
}

}  // namespace
}  // namespace lunara::test
