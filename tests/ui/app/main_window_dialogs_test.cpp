// The main window while one of its commands shows a dialog, and afterwards.

#include "platform/pocketpc/common_controls.h"
#include "resources/ids.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class MainWindowDialogs : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
    }
    bool IsEnabled() { return ::IsWindowEnabled(main->Handle()) != FALSE; }
};

TEST_F(MainWindowDialogs, ItIsDisabledAndItsButtonsAreHiddenUntilTheDialogIsGone) {
    const struct {
        const char* label;
        UINT command;
        int button;
    } rows[] = {
        {"backup, cancelled", IDM_BACKUP, IDCANCEL},
        {"backup, done", IDM_BACKUP, IDOK},
        {"restore, cancelled", IDM_RESTORE, IDCANCEL},
        {"restore, not confirmed", IDM_RESTORE, IDOK},
        {"restore, nothing left to restore", IDM_RESTORE, IDC_DELETE_BACKUP},
        {"history, closed", IDM_HISTORY, IDCANCEL},
    };
    for (const UINT view : {UINT{IDM_VIEW_DIARY}, UINT{IDM_VIEW_GRAPH}}) {
        SCOPED_TRACE(view);
        Command(view);
        for (const auto& row : rows) {
            LUNARA_ROW(row);
            RemoveTree(Documents());
            PutBackup(L"a");
            const std::vector<BYTE> before = ButtonStates();
            std::vector<BYTE> hidden = before;
            for (BYTE& state : hidden) {
                state |= TBSTATE_HIDDEN;
            }
            ASSERT_NE(before, hidden);
            std::vector<BYTE> meanwhile;
            bool wasEnabled = true;
            messages.answers = {IDNO};
            script->Then([&](HWND) {
                meanwhile = ButtonStates();
                wasEnabled = IsEnabled();
            });
            script->Press(row.button);
            Command(row.command);
            EXPECT_EQ(meanwhile, hidden);
            EXPECT_FALSE(wasEnabled);
            EXPECT_EQ(ButtonStates(), before);
            EXPECT_TRUE(IsEnabled());
        }
    }
}

}  // namespace
}  // namespace lunara::test
