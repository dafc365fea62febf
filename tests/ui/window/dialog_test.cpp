// Dialogs: binding to their window, modal and modeless life, owner, font.

#include "window/dialog.h"

#include <array>
#include <functional>

#include "tests/ui/ui_test.h"
#include "tests/ui/ui_test_ids.h"
#include "window/data_exchange.h"
#include "window/window_map.h"

namespace lunara::test {
namespace {

constexpr UINT NoSuchTemplate = 59999;
constexpr int TextCapacity = 16;

class TestDialog : public lunara::Dialog {
  public:
    explicit TestDialog(UINT shapeId = TEST_DIALOG, Window* owner = nullptr)
        : lunara::Dialog(shapeId, owner) {
        fullScreen = false;
    }
    TestDialog(const TestDialog&) = delete;
    TestDialog& operator=(const TestDialog&) = delete;
    ~TestDialog() override {
        if (Handle() != nullptr) {
            ::DestroyWindow(Handle());
        }
    }
    BOOL OnInitDialog() override {
        ++initialised;
        const BOOL answer = lunara::Dialog::OnInitDialog();
        if (whenInitialised) {
            whenInitialised();
        }
        return answer;
    }
    void DoDataExchange(DataExchange& exchange) override {
        ExchangeText(exchange, TEST_EDIT, text.data(), TextCapacity);
    }

    int initialised = 0;
    std::array<WCHAR, TextCapacity> text{};
    std::function<void()> whenInitialised;
};

class Dialog : public UiTest {};

void Type(const lunara::Dialog& dialog, const WCHAR* text) {
    ::SetDlgItemTextW(dialog.Handle(), TEST_EDIT, text);
}

TEST_F(Dialog, ModelessDialogIsBoundAndLoadedButNotShown) {
    TestDialog dialog;
    ::lstrcpyW(dialog.text.data(), TEXT("Anna"));
    ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    EXPECT_EQ(dialog.initialised, 1);
    EXPECT_EQ(Window::FromHandle(dialog.Handle()), &dialog);
    EXPECT_EQ(TextOf(dialog.Handle()), TEXT("Fields"));
    EXPECT_EQ(TextOf(::GetDlgItem(dialog.Handle(), TEST_EDIT)), TEXT("Anna"));
    EXPECT_FALSE(::IsWindowVisible(dialog.Handle()));
    ::DestroyWindow(dialog.Handle());
    EXPECT_EQ(dialog.Handle(), nullptr);
    EXPECT_EQ(WindowMap::Current(), nullptr);
}

TEST_F(Dialog, ADialogCanBeCreatedAgain) {
    TestDialog dialog;
    for (int round = 1; round <= 3; ++round) {
        ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
        EXPECT_EQ(dialog.initialised, round);
        ::DestroyWindow(dialog.Handle());
    }
}

TEST_F(Dialog, OkReadsTheControlsAndEndsWithOne) {
    TestDialog dialog;
    dialog.whenInitialised = [&] {
        Type(dialog, TEXT("typed"));
        ::PostMessageW(dialog.Handle(), WM_COMMAND, IDOK, 0);
    };
    EXPECT_EQ(dialog.DoModal(), 1);
    EXPECT_STREQ(dialog.text.data(), TEXT("typed"));
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST_F(Dialog, CancelEndsWithTwoAndReadsNothing) {
    TestDialog dialog;
    ::lstrcpyW(dialog.text.data(), TEXT("before"));
    dialog.whenInitialised = [&] {
        Type(dialog, TEXT("typed"));
        ::PostMessageW(dialog.Handle(), WM_COMMAND, IDCANCEL, 0);
    };
    EXPECT_EQ(dialog.DoModal(), 2);
    EXPECT_STREQ(dialog.text.data(), TEXT("before"));
}

TEST_F(Dialog, AMissingTemplateMakesNoDialog) {
    TestDialog dialog(NoSuchTemplate);
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_FALSE(TestDialog::CreateModeless(dialog, NoSuchTemplate));
    EXPECT_EQ(dialog.initialised, 0);
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST_F(Dialog, EndingDuringInitialisationGivesTheModalResult) {
    TestDialog dialog;
    dialog.whenInitialised = [&] { ::EndDialog(dialog.Handle(), 17); };
    EXPECT_EQ(dialog.DoModal(), 17);
}

TEST_F(Dialog, WithoutAnOwnerItIsOwnedByTheMainWindow) {
    const StandInMainWindow mainWindow;
    TestDialog dialog;
    ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    EXPECT_EQ(::GetWindow(dialog.Handle(), GW_OWNER), mainWindow.Handle());
    ::DestroyWindow(dialog.Handle());
    HWND modalOwner = nullptr;
    dialog.whenInitialised = [&] {
        modalOwner = ::GetWindow(dialog.Handle(), GW_OWNER);
        ::EndDialog(dialog.Handle(), 1);
    };
    dialog.DoModal();
    EXPECT_EQ(modalOwner, mainWindow.Handle());
}

TEST_F(Dialog, WithoutAMainWindowItHasNoOwner) {
    TestDialog dialog;
    ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    EXPECT_EQ(::GetWindow(dialog.Handle(), GW_OWNER), nullptr);
}

TEST_F(Dialog, AGivenOwnerIsPreferredToTheMainWindow) {
    const StandInMainWindow mainWindow;
    ScriptedWindow owner;
    ASSERT_EQ(owner.Make(), 1);
    TestDialog modeless;
    ASSERT_TRUE(TestDialog::CreateModeless(modeless, TEST_DIALOG, &owner));
    EXPECT_EQ(::GetWindow(modeless.Handle(), GW_OWNER), owner.Handle());
    TestDialog modal(TEST_DIALOG, &owner);
    HWND modalOwner = nullptr;
    modal.whenInitialised = [&] {
        modalOwner = ::GetWindow(modal.Handle(), GW_OWNER);
        ::EndDialog(modal.Handle(), 1);
    };
    modal.DoModal();
    EXPECT_EQ(modalOwner, owner.Handle());
}

TEST_F(Dialog, OtherMessagesAreLeftToTheDialogManager) {
    TestDialog dialog;
    ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    const LRESULT answer = ::SendMessageW(dialog.Handle(), DM_GETDEFID, 0, 0);
    EXPECT_EQ(HIWORD(answer), DC_HASDEFID);
    EXPECT_EQ(LOWORD(answer), IDOK);
    LRESULT result = 7;
    EXPECT_FALSE(dialog.OnMessage(WM_COMMAND, TEST_EDIT, 0, &result));
    EXPECT_FALSE(dialog.OnMessage(WM_PAINT, 0, 0, &result));
    EXPECT_EQ(result, 7);
}

TEST_F(Dialog, OkAndCancelAreRecognisedByTheirIdWhateverTheNotification) {
    class CountingDialog : public TestDialog {
      public:
        void OnOK() override { ++oks; }
        void OnCancel() override { ++cancels; }
        int oks = 0;
        int cancels = 0;
    };
    CountingDialog dialog;
    LRESULT result = 7;
    EXPECT_TRUE(dialog.OnMessage(WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0, &result));
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(dialog.OnMessage(WM_COMMAND, MAKEWPARAM(IDCANCEL, 1), 0, nullptr));
    EXPECT_EQ(dialog.oks, 1);
    EXPECT_EQ(dialog.cancels, 1);
}

TEST_F(Dialog, InitialisationLeftUnhandledReachesTheDialogOnce) {
    class SilentDialog : public TestDialog {
      public:
        bool OnMessage(UINT message, WPARAM, LPARAM, LRESULT*) override {
            seen += message == WM_INITDIALOG ? 1 : 0;
            return false;
        }
        int seen = 0;
    };
    SilentDialog dialog;
    ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    EXPECT_EQ(dialog.seen, 1);
}

TEST_F(Dialog, ADialogMadeWhileAnotherInitialisesIsBoundToo) {
    TestDialog outer;
    TestDialog inner;
    outer.whenInitialised = [&] { EXPECT_TRUE(TestDialog::CreateModeless(inner, TEST_DIALOG)); };
    ASSERT_TRUE(TestDialog::CreateModeless(outer, TEST_DIALOG));
    EXPECT_EQ(Window::FromHandle(outer.Handle()), &outer);
    EXPECT_EQ(Window::FromHandle(inner.Handle()), &inner);
    EXPECT_NE(outer.Handle(), inner.Handle());
}

/// Binds an object to each dialog window as soon as that exists, before the dialog manager sends
/// WM_INITDIALOG.
class EarlyBinder {
  public:
    explicit EarlyBinder(Window& object) {
        bound = &object;
        hook = ::SetWindowsHookExW(WH_CBT, &OnCreate, nullptr, ::GetCurrentThreadId());
    }
    EarlyBinder(const EarlyBinder&) = delete;
    EarlyBinder& operator=(const EarlyBinder&) = delete;
    ~EarlyBinder() { ::UnhookWindowsHookEx(hook); }

  private:
    static LRESULT CALLBACK OnCreate(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_CREATEWND) {
            const auto window = reinterpret_cast<HWND>(wParam);
            if (ClassOf(window) == TEXT("#32770")) {
                bound->Attach(window);
            }
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline Window* bound = nullptr;
    HHOOK hook;
};

TEST_F(Dialog, InitialisationOfAWindowBoundToAnotherObjectGoesToThatObject) {
    ScriptedWindow other;
    TestDialog dialog;
    {
        const EarlyBinder binder(other);
        ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    }
    EXPECT_EQ(dialog.Handle(), nullptr);
    EXPECT_EQ(dialog.initialised, 0);
    EXPECT_EQ(other.CountOf(WM_INITDIALOG), 1);
}

TEST_F(Dialog, ItsControlsHaveTheShellFontWhateverTheTemplateNames) {
    TestDialog dialog;
    ASSERT_TRUE(TestDialog::CreateModeless(dialog, TEST_DIALOG));
    const auto shell = reinterpret_cast<LRESULT>(ShellFont());
    // The dialog itself keeps the font that its template names.
    ASSERT_NE(::SendMessageW(dialog.Handle(), WM_GETFONT, 0, 0), shell);
    for (const int id : {TEST_EDIT, TEST_CHECK, TEST_COMBO, IDOK, IDCANCEL}) {
        EXPECT_EQ(::SendDlgItemMessageW(dialog.Handle(), id, WM_GETFONT, 0, 0), shell) << id;
    }
}

}  // namespace
}  // namespace lunara::test
