// The end of the main window: every way out saves the diary and the settings.

#include <string>

#include "platform/pocketpc/common_controls.h"
#include "resources/ids.h"
#include "storage/data_folder.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {
namespace {

class MainWindowEnd : public MainWindowTest {
  protected:
    /// The window is gone, its quit message came, diary and settings are saved.
    void ExpectEnded() {
        EXPECT_EQ(main->Handle(), nullptr);
        EXPECT_TRUE(TakeQuitMessage());
        UserData data;
        ASSERT_EQ(data.Load(TestUser, TestPassword), 1);
        EXPECT_EQ(data.bleeding.Count(), 1);
        EXPECT_EQ(data.notePages.Count(), 1);
        EXPECT_EQ(StoredText(TEXT("LastUser")), TestUser);
        EXPECT_FALSE(main->Data().IsLoaded());
    }
};

TEST_F(MainWindowEnd, EveryWayOutSaves) {
    const struct {
        const char* label;
        UINT message;
        WPARAM wParam;
    } rows[] = {
        {"menu", WM_COMMAND, IDM_EXIT},
        {"Ctrl+Q", WM_COMMAND, IDOK},
        {"close box", WM_SYSCOMMAND, SC_CLOSE},
        {"end of the session", WM_ENDSESSION, TRUE},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        RemoveUser(TestUser);
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
        Send(row.message, row.wParam);
        ExpectEnded();
    }
}

TEST_F(MainWindowEnd, ACancelledEndOfTheSessionChangesNothing) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    EXPECT_EQ(Send(WM_QUERYENDSESSION), TRUE);
    Send(WM_ENDSESSION, FALSE);
    EXPECT_NE(main->Handle(), nullptr);
    EXPECT_TRUE(main->Data().bleeding.dirty);
}

TEST_F(MainWindowEnd, TheEndOfTheSessionEndsASignIn) {
    script->Then([this](HWND) { Send(WM_ENDSESSION, TRUE); });
    EXPECT_EQ(Create(), 0);
    EXPECT_TRUE(TakeQuitMessage());
    EXPECT_EQ(main->Handle(), nullptr);
}

TEST_F(MainWindowEnd, ACloseMessageEndsASignIn) {
    script->Then([this](HWND) { ::PostMessageW(main->Handle(), WM_CLOSE, 0, 0); });
    EXPECT_EQ(Create(), 0);
    EXPECT_TRUE(TakeQuitMessage());
    EXPECT_EQ(main->Handle(), nullptr);
}

TEST_F(MainWindowEnd, TheEndOfTheSessionUnderADialogSaves) {
    for (const UINT command : {UINT{IDM_CHANGE_PASSWORD}, UINT{IDM_HISTORY}}) {
        SCOPED_TRACE(command);
        RemoveUser(TestUser);
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
        script->Then([this](HWND) { Send(WM_ENDSESSION, TRUE); });
        Command(command);
        ExpectEnded();
        MSG message{};
        EXPECT_FALSE(::PeekMessageW(&message, nullptr, WM_PREDICTION_WARNING, WM_PREDICTION_WARNING,
                                    PM_REMOVE));
    }
}

TEST_F(MainWindowEnd, AFailedSaveNamesTheFileAndIsTriedAgain) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    // A folder where the file has to go makes the save fail.
    const std::wstring file = FolderOf(TestUser) + L"\\Bleeding.dat";
    ASSERT_EQ(CreateDirectoryTree(file.c_str()), 1);
    messages.answers = {IDRETRY, IDCANCEL};
    ASSERT_TRUE(Close());
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_NE(messages.boxes[0].text.find(file), std::wstring::npos);
    EXPECT_EQ(messages.boxes[0].flags & MB_TYPEMASK, UINT{MB_RETRYCANCEL});
    ::RemoveDirectoryW(file.c_str());
}

TEST_F(MainWindowEnd, ThePasswordIsWipedAtTheEnd) {
    ASSERT_EQ(SignIn(), 1);
    EXPECT_NE(main->Password().CurrentMask(), 0U);
    ASSERT_TRUE(Close());
    EXPECT_EQ(main->Password().CurrentMask(), 0U);
    EXPECT_STRNE(main->Password().Text(), TestPassword);
}

TEST_F(MainWindowEnd, EverySettingIsWritten) {
    ASSERT_EQ(SignIn(), 1);
    Command(IDM_VIEW_DIARY);
    Command(IDM_SHOW_OVULATION);
    Command(IDM_VIEW_GRAPH);
    Command(IDM_SHOW_TEMPERATURE);
    ASSERT_TRUE(Close());
    EXPECT_EQ(StoredDword(TEXT("CurrentView")), ViewGraph);
    EXPECT_EQ(StoredDword(TEXT("DiaryView_ShowFlags")), 31U & ~8U);
    EXPECT_EQ(StoredDword(TEXT("GraphView_ShowFlags")), 2U);
    EXPECT_EQ(StoredDword(TEXT("TemperatureMeasure")), 0U);
    DWORD bytes = 0;
    ::RegGetValueW(HKEY_CURRENT_USER, TestSettingsPath, TEXT("LastUser"), RRF_RT_REG_SZ, nullptr,
                   nullptr, &bytes);
    EXPECT_EQ(bytes, (std::wstring(TestUser).size() + 1) * sizeof(WCHAR));
}

TEST_F(MainWindowEnd, TheSameObjectCanSignInAgain) {
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
        ASSERT_TRUE(Close());
    }
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TestPassword), 1);
}

TEST_F(MainWindowEnd, AWarningStillPostedAtTheEndIsFreedAndNotShown) {
    StoreDword(TEXT("CurrentView"), ViewDiary);
    ASSERT_EQ(SignIn(), 1);  // posts the statistics warning of an empty diary
    const HWND window = main->Handle();
    ASSERT_TRUE(Close());
    MSG message{};
    EXPECT_FALSE(
        ::PeekMessageW(&message, window, WM_PREDICTION_WARNING, WM_PREDICTION_WARNING, PM_REMOVE));
    PumpMessages();
    EXPECT_TRUE(messages.boxes.empty());
}

}  // namespace
}  // namespace lunara::test
