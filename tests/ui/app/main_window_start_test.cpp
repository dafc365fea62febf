// The start of the main window: its settings, the name offered at the sign-in, the first view.

#include <vector>

#include "platform/pocketpc/owner_name.h"
#include "platform/pocketpc/top_level_window.h"
#include "resources/ids.h"
#include "tests/ui/app/main_window_test_base.h"
#include "window/settings.h"

namespace lunara::test {
namespace {

constexpr WCHAR CurrentViewValue[] = TEXT("CurrentView");
constexpr WCHAR LastUserValue[] = TEXT("LastUser");

class MainWindowStart : public MainWindowTest {
  protected:
    HWND TopView() { return ::GetWindow(main->Handle(), GW_CHILD); }
    /// The name that the sign-in offers; `keptName` is then the name that the window held
    /// meanwhile. Both are looked at because the sign-in cuts a long name by itself, too.
    std::wstring OfferedName() {
        std::wstring name;
        script->Then([this, &name](HWND dialog) {
            name = TextOf(::GetDlgItem(dialog, IDC_USER_NAME));
            keptName = main->UserName();
        });
        script->Press(IDCANCEL);
        Create();
        return name;
    }

    std::wstring keptName;
};

/// Redirects HKEY_CURRENT_USER to a key of the test's own while it lives.
class OwnCurrentUser {
  public:
    OwnCurrentUser() {
        EXPECT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER,
                                    (std::wstring(TestSettingsPath) + L"\\User").c_str(), 0,
                                    nullptr, 0, KEY_ALL_ACCESS, nullptr, &root, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(::RegOverridePredefKey(HKEY_CURRENT_USER, root), ERROR_SUCCESS);
    }
    OwnCurrentUser(const OwnCurrentUser&) = delete;
    OwnCurrentUser& operator=(const OwnCurrentUser&) = delete;
    ~OwnCurrentUser() {
        ::RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        ::RegCloseKey(root);
    }

    /// Writes the device's owner record with this name.
    void StoreOwner(const std::wstring& name) const {
        std::vector<WCHAR> record(name.begin(), name.end());
        record.resize(320);  // the name is followed by other fields
        EXPECT_EQ(
            ::RegSetKeyValueW(root, TEXT("ControlPanel\\Owner"), TEXT("Owner"), REG_BINARY,
                              record.data(), static_cast<DWORD>(record.size() * sizeof(WCHAR))),
            ERROR_SUCCESS);
    }

  private:
    HKEY root = nullptr;
};

TEST_F(MainWindowStart, ItIsAPortraitWindowWithCaptionAndFrame) {
    ASSERT_EQ(SignIn(), 1);
    const auto style = static_cast<DWORD>(::GetWindowLongPtrW(main->Handle(), GWL_STYLE));
    constexpr DWORD Wanted = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_THICKFRAME | WS_VISIBLE;
    EXPECT_EQ(style & Wanted, Wanted);
    EXPECT_EQ(style & WS_MAXIMIZEBOX, 0U);
    RECT client{};
    ::GetClientRect(main->Handle(), &client);
    EXPECT_EQ(client.right, PortraitClient.cx);
    EXPECT_EQ(client.bottom, PortraitClient.cy);
    EXPECT_EQ(TextOf(main->Handle()), L"Lunara");
    EXPECT_EQ(GetMainWindow(), main.get());
}

TEST_F(MainWindowStart, ItGetsItsIconsWhenItIsIdle) {
    ASSERT_EQ(SignIn(), 1);
    for (const WPARAM kind : {WPARAM{ICON_BIG}, WPARAM{ICON_SMALL}}) {
        EXPECT_TRUE(
            PumpUntil([&] { return ::SendMessageW(main->Handle(), WM_GETICON, kind, 0) != 0; }));
    }
}

TEST_F(MainWindowStart, ItIsVisibleBehindTheSignIn) {
    bool visible = false;
    script->Then([&](HWND) { visible = ::IsWindowVisible(main->Handle()) != FALSE; });
    ASSERT_EQ(SignIn(), 1);
    EXPECT_TRUE(visible);
}

TEST_F(MainWindowStart, AKeyWithoutTheValueShowsTheGraph) {
    ASSERT_EQ(SignIn(), 1);
    EXPECT_EQ(main->CurrentView(), ViewGraph);
    EXPECT_EQ(TopView(), main->Graph().Handle());
}

TEST_F(MainWindowStart, WithoutAnyKeyTheDiaryIsShown) {
    SetSettingsLocation(SettingsLocation{nullptr, nullptr, TestSettingsPath});
    ASSERT_EQ(SignIn(), 1);
    EXPECT_EQ(main->CurrentView(), ViewDiary);
    EXPECT_EQ(TopView(), main->Diary().Handle());
}

TEST_F(MainWindowStart, TheStoredViewIsShownAndStoredAgain) {
    for (const DWORD view : {ViewDiary, ViewGraph}) {
        SCOPED_TRACE(view);
        StoreDword(CurrentViewValue, view);
        ASSERT_EQ(SignIn(), 1);
        EXPECT_EQ(TopView(), view == ViewDiary ? main->Diary().Handle() : main->Graph().Handle());
        ASSERT_TRUE(Close());
        EXPECT_EQ(StoredDword(CurrentViewValue), view);
    }
}

TEST_F(MainWindowStart, AStrayViewShowsTheGraphAndIsWrittenBack) {
    StoreDword(CurrentViewValue, 5);
    ASSERT_EQ(SignIn(), 1);
    EXPECT_EQ(TopView(), main->Graph().Handle());
    EXPECT_EQ(main->CurrentView(), 5U);
    ASSERT_TRUE(Close());
    EXPECT_EQ(StoredDword(CurrentViewValue), 5U);

    ASSERT_EQ(SignIn(), 1);
    Command(IDM_VIEW_GRAPH);
    ASSERT_TRUE(Close());
    EXPECT_EQ(StoredDword(CurrentViewValue), ViewGraph)
        << "a view command replaces the stray value";
}

TEST_F(MainWindowStart, AViewOfTheWrongTypeReadsAsMissing) {
    StoreText(CurrentViewValue, TEXT("3000"));
    ASSERT_EQ(SignIn(), 1);
    EXPECT_EQ(main->CurrentView(), ViewGraph);
}

TEST_F(MainWindowStart, ALongLastUserIsCutToThirtyOneCharacters) {
    StoreText(LastUserValue, std::wstring(40, L'n').c_str());
    EXPECT_EQ(OfferedName(), std::wstring(31, L'n'));
    EXPECT_EQ(keptName, std::wstring(31, L'n'));
}

TEST_F(MainWindowStart, WithoutALastUserTheOwnerIsOffered) {
    const std::wstring owner = OwnerName();
    ASSERT_FALSE(owner.empty());
    EXPECT_EQ(OfferedName(), owner.substr(0, 31));
}

TEST_F(MainWindowStart, TheOwnersNameIsCutToThirtyOneCharacters) {
    const OwnCurrentUser user;
    const struct {
        const char* label;
        std::size_t length;
        std::size_t wanted;
    } rows[] = {
        {"fits", 31, 31},
        {"one too many", 32, 31},
        {"as long as the record has room for", OwnerNameUnits, 31},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        user.StoreOwner(std::wstring(row.length, L'o'));
        EXPECT_EQ(OfferedName(), std::wstring(row.wanted, L'o'));
        EXPECT_EQ(keptName, std::wstring(row.wanted, L'o'));
    }
}

TEST_F(MainWindowStart, WithoutAnyKeyTheNameIsUnknown) {
    SetSettingsLocation(SettingsLocation{nullptr, nullptr, TestSettingsPath});
    EXPECT_EQ(OfferedName(), L"Unknown");
}

TEST_F(MainWindowStart, ACancelledSignInRefusesTheWindow) {
    script->Press(IDCANCEL);
    EXPECT_EQ(Create(), 0);
    EXPECT_EQ(main->Handle(), nullptr);
    EXPECT_FALSE(TakeQuitMessage());
    EXPECT_EQ(StoredDword(CurrentViewValue), std::nullopt) << "nothing is written";
    EXPECT_FALSE(FileExists(FolderOf(TestUser)));
}

TEST_F(MainWindowStart, TheUserIsRememberedAtTheEnd) {
    ASSERT_EQ(SignIn(), 1);
    EXPECT_EQ(StoredText(LastUserValue), L"");
    ASSERT_TRUE(Close());
    EXPECT_EQ(StoredText(LastUserValue), TestUser);
    EXPECT_EQ(OfferedName(), TestUser);
}

}  // namespace
}  // namespace lunara::test
