// Data exchange: the list of fields that a dialog moves between its controls and its members.

#include "window/data_exchange.h"

#include <array>
#include <functional>
#include <vector>

#include "tests/ui/ui_test.h"
#include "tests/ui/ui_test_ids.h"
#include "window/dialog.h"

namespace lunara::test {
namespace {

constexpr int TextCapacity = 8;

using Exchange = lunara::DataExchange;

/// The test dialog with a list of fields that each test sets.
class FieldsDialog : public Dialog {
  public:
    FieldsDialog() : Dialog(TEST_DIALOG) { fullScreen = false; }
    FieldsDialog(const FieldsDialog&) = delete;
    FieldsDialog& operator=(const FieldsDialog&) = delete;
    ~FieldsDialog() override {
        if (Handle() != nullptr) {
            ::DestroyWindow(Handle());
        }
    }
    void DoDataExchange(Exchange& exchange) override {
        if (fields) {
            fields(exchange);
        }
    }
    HWND Control(int id) const { return ::GetDlgItem(Handle(), id); }

    std::function<void(Exchange&)> fields;
};

class DataExchange : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_TRUE(Dialog::CreateModeless(dialog, TEST_DIALOG));
    }
    void TearDown() override {
        ::DestroyWindow(dialog.Handle());
        UiTest::TearDown();
    }

    FieldsDialog dialog;
    std::array<WCHAR, TextCapacity> text{};
};

TEST_F(DataExchange, UpdateDataAsksForTheFieldsInTheGivenDirection) {
    std::vector<bool> directions;
    dialog.fields = [&](Exchange& exchange) {
        EXPECT_EQ(exchange.Current(), nullptr);
        directions.push_back(exchange.IsSaving());
    };
    EXPECT_EQ(dialog.UpdateData(true), 1);
    EXPECT_EQ(dialog.UpdateData(false), 1);
    EXPECT_EQ(directions, (std::vector<bool>{true, false}));
}

TEST_F(DataExchange, TakeMakesTheControlTheCurrentOne) {
    Exchange exchange(true, dialog);
    EXPECT_EQ(exchange.SelectControl(TEST_EDIT), dialog.Control(TEST_EDIT));
    EXPECT_EQ(exchange.Current(), dialog.Control(TEST_EDIT));
    EXPECT_EQ(exchange.SelectControl(9), nullptr);
    EXPECT_EQ(exchange.Current(), nullptr);
}

TEST_F(DataExchange, TextGoesBothWays) {
    dialog.fields = [&](Exchange& exchange) {
        ExchangeText(exchange, TEST_EDIT, text.data(), TextCapacity);
        EXPECT_EQ(exchange.Current(), dialog.Control(TEST_EDIT));
    };
    ::lstrcpyW(text.data(), TEXT("Anna"));
    dialog.UpdateData(false);
    EXPECT_EQ(TextOf(dialog.Control(TEST_EDIT)), TEXT("Anna"));
    ::SetWindowTextW(dialog.Control(TEST_EDIT), TEXT("Berta"));
    dialog.UpdateData(true);
    EXPECT_STREQ(text.data(), TEXT("Berta"));
}

TEST_F(DataExchange, SavedTextIsCutAtTheBuffer) {
    dialog.fields = [&](Exchange& exchange) {
        ExchangeText(exchange, TEST_EDIT, text.data(), TextCapacity);
    };
    ::SetWindowTextW(dialog.Control(TEST_EDIT), TEXT("0123456789"));
    dialog.UpdateData(true);
    EXPECT_STREQ(text.data(), TEXT("0123456"));
}

TEST_F(DataExchange, AMissingControlLeavesTheFieldAlone) {
    dialog.fields = [&](Exchange& exchange) {
        ExchangeText(exchange, 9, text.data(), TextCapacity);
    };
    ::lstrcpyW(text.data(), TEXT("Anna"));
    dialog.UpdateData(true);
    EXPECT_STREQ(text.data(), TEXT("Anna"));
}

TEST_F(DataExchange, LimitTextLimitsTheCurrentControl) {
    struct Row {
        const char* label;
        const WCHAR* text;
        bool saving;
        int result;
        LRESULT limit;
    };
    constexpr Row Rows[] = {
        {"loading", TEXT("Anna"), false, 0, 5},
        {"loading, longer", TEXT("Annabella"), false, 0, 5},
        {"saving, shorter", TEXT("Anna"), true, 0, 5},
        {"saving, as long", TEXT("Annas"), true, 0, 5},
        {"saving, longer", TEXT("Annabe"), true, 6, 20},
    };
    for (const Row& row : Rows) {
        LUNARA_ROW(row);
        const HWND edit = dialog.Control(TEST_EDIT);
        ::SendMessageW(edit, EM_LIMITTEXT, 20, 0);
        Exchange exchange(row.saving, dialog);
        exchange.SelectControl(TEST_EDIT);
        EXPECT_EQ(LimitText(exchange, row.text, 5), row.result);
        EXPECT_EQ(::SendMessageW(edit, EM_GETLIMITTEXT, 0, 0), row.limit);
    }
}

TEST_F(DataExchange, CheckGoesBothWays) {
    int value = 0;
    dialog.fields = [&](Exchange& exchange) { ExchangeCheck(exchange, TEST_CHECK, value); };
    for (const int state : {BST_CHECKED, BST_INDETERMINATE, BST_UNCHECKED}) {
        value = state;
        dialog.UpdateData(false);
        EXPECT_EQ(::SendMessageW(dialog.Control(TEST_CHECK), BM_GETCHECK, 0, 0), state);
        value = 9;
        dialog.UpdateData(true);
        EXPECT_EQ(value, state);
    }
}

TEST_F(DataExchange, CheckOutsideItsRangeShowsUncheckedAndStoresZero) {
    for (const int wrong : {3, -1, 1000}) {
        SCOPED_TRACE(wrong);
        ::SendMessageW(dialog.Control(TEST_CHECK), BM_SETCHECK, BST_CHECKED, 0);
        int value = wrong;
        dialog.fields = [&](Exchange& exchange) { ExchangeCheck(exchange, TEST_CHECK, value); };
        dialog.UpdateData(false);
        EXPECT_EQ(value, 0);
        EXPECT_EQ(::SendMessageW(dialog.Control(TEST_CHECK), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    }
}

class DataExchangeCombo : public DataExchange {
  protected:
    void Fill(std::initializer_list<const WCHAR*> items) {
        for (const WCHAR* item : items) {
            ::SendMessageW(Combo(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        }
        dialog.fields = [this](Exchange& exchange) {
            ExchangeComboText(exchange, TEST_COMBO, text.data());
        };
    }
    HWND Combo() const { return dialog.Control(TEST_COMBO); }
    LRESULT Selected() const { return ::SendMessageW(Combo(), CB_GETCURSEL, 0, 0); }
};

TEST_F(DataExchangeCombo, SelectedItemGoesBothWays) {
    Fill({TEXT("first"), TEXT("second"), TEXT("third")});
    ::lstrcpyW(text.data(), TEXT("second"));
    dialog.UpdateData(false);
    EXPECT_EQ(Selected(), 1);
    ::lstrcpyW(text.data(), TEXT("first"));
    dialog.UpdateData(false);
    EXPECT_EQ(Selected(), 0);
    ::SendMessageW(Combo(), CB_SETCURSEL, 2, 0);
    dialog.UpdateData(true);
    EXPECT_STREQ(text.data(), TEXT("third"));
}

TEST_F(DataExchangeCombo, WithoutASelectionTheFieldIsLeftAlone) {
    Fill({TEXT("first")});
    ::lstrcpyW(text.data(), TEXT("kept"));
    dialog.UpdateData(true);
    EXPECT_STREQ(text.data(), TEXT("kept"));
}

TEST_F(DataExchangeCombo, TheSearchForATextBeginsAfterTheFirstItem) {
    Fill({TEXT("may"), TEXT("june"), TEXT("may 2")});
    ::lstrcpyW(text.data(), TEXT("may"));
    dialog.UpdateData(false);
    EXPECT_EQ(Selected(), 2);
}

}  // namespace
}  // namespace lunara::test
