// The history dialog: adding a past period by its start, end, length and bleeding level.

#include "dialogs/history_dialog.h"

#include "platform/clock.h"
#include "platform/pocketpc/common_controls.h"
#include "resources/ids.h"
#include "tests/support/user_data_access.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {
namespace {

constexpr DateKey Key(unsigned month, unsigned day) { return MakeDateKey(2024, month, day); }

DateKey DateOf(HWND dialog, int picker) {
    SYSTEMTIME date{};
    ::SendDlgItemMessageW(dialog, picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date));
    return ToDateKey(date);
}

/// Sets a picker's date and notifies the dialog, as the picker does when the user chooses one.
void Pick(HWND dialog, int picker, const SYSTEMTIME& date) {
    const HWND control = ::GetDlgItem(dialog, picker);
    ::SendMessageW(control, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
    NMDATETIMECHANGE change{};
    change.nmhdr =
        NMHDR{control, static_cast<UINT_PTR>(picker), static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = GDT_VALID;
    change.st = date;
    ::SendMessageW(dialog, WM_NOTIFY, static_cast<WPARAM>(picker),
                   reinterpret_cast<LPARAM>(&change));
}

/// Sets a spin control and notifies the dialog, as a press of its arrows does.
void Spin(HWND dialog, int spin, int position) {
    const HWND control = ::GetDlgItem(dialog, spin);
    ::SendMessageW(control, UDM_SETPOS, 0, position);
    ::SendMessageW(dialog, WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, position),
                   reinterpret_cast<LPARAM>(control));
}

/// What the dialog's controls show.
struct Shown {
    DateKey start;
    DateKey end;
    std::wstring length;
    std::wstring bleeding;
    bool mayAdd;
};

Shown Look(HWND dialog) {
    return {DateOf(dialog, IDC_START_DATE), DateOf(dialog, IDC_END_DATE),
            TextOf(::GetDlgItem(dialog, IDC_PERIOD_LENGTH)),
            TextOf(::GetDlgItem(dialog, IDC_BLEEDING)),
            ::IsWindowEnabled(::GetDlgItem(dialog, IDOK)) != FALSE};
}

class HistoryDialog : public MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
    }
    void Expect(const Shown& shown, DateKey start, DateKey end, const wchar_t* length,
                const wchar_t* bleeding, bool mayAdd) {
        EXPECT_EQ(shown.start, start);
        EXPECT_EQ(shown.end, end);
        EXPECT_EQ(shown.length, length);
        EXPECT_EQ(shown.bleeding, bleeding);
        EXPECT_EQ(shown.mayAdd, mayAdd);
    }
};

TEST_F(HistoryDialog, ACurrentDateTooLateForAStartOffersTheLastFiveDays) {
    Shown shown{};
    script->Then([&](HWND dialog) { shown = Look(dialog); });
    script->Press(IDOK).Press(IDCANCEL);
    Command(IDM_HISTORY);
    Expect(shown, Key(5, 10), Key(5, 15), L"5", L"Normal", true);
    ASSERT_EQ(main->Data().Bleeding().Count(), 5);
    main->Data().Bleeding().Sort();
    EXPECT_EQ(main->Data().Bleeding().At(0).date, Key(5, 10));
    EXPECT_EQ(main->Data().Bleeding().At(4).date, Key(5, 14));
}

TEST_F(HistoryDialog, StartsAtTheCurrentDateWhenThatIsAllowed) {
    main->Data().SetCurrentDate(Day(2024, 4, 2));
    Shown shown{};
    script->Then([&](HWND dialog) { shown = Look(dialog); });
    script->Press(IDCANCEL);
    Command(IDM_HISTORY);
    Expect(shown, Key(4, 2), Key(4, 7), L"5", L"Normal", true);
    EXPECT_EQ(main->Data().Bleeding().Count(), 0);
}

TEST_F(HistoryDialog, AllFieldsMoveTogether) {
    std::vector<Shown> shown;
    const auto look = [&](HWND dialog) { shown.push_back(Look(dialog)); };
    script->Then([&](HWND dialog) {
        Pick(dialog, IDC_START_DATE, Day(2024, 4, 2));
        look(dialog);
        Pick(dialog, IDC_END_DATE, Day(2024, 4, 9));
        look(dialog);
        Spin(dialog, IDC_PERIOD_LENGTH_SPIN, 3);
        look(dialog);
        Spin(dialog, IDC_BLEEDING_SPIN, 1);
        look(dialog);
    });
    script->Press(IDCANCEL);
    Command(IDM_HISTORY);
    ASSERT_EQ(shown.size(), 4U);
    Expect(shown[0], Key(4, 2), Key(4, 7), L"5", L"Normal", true);
    Expect(shown[1], Key(4, 2), Key(4, 9), L"7", L"Normal", true);
    Expect(shown[2], Key(4, 2), Key(4, 5), L"3", L"Normal", true);
    Expect(shown[3], Key(4, 2), Key(4, 5), L"3", L"Heavy", true);
}

TEST_F(HistoryDialog, ARefusedDateJumpsBack) {
    const struct {
        const char* label;
        int picker;
        SYSTEMTIME date;
    } rows[] = {
        {"end one day after the start", IDC_END_DATE, Day(2024, 4, 3)},
        {"end eight days after the start", IDC_END_DATE, Day(2024, 4, 10)},
        {"a start that reaches past today", IDC_START_DATE, Day(2024, 5, 11)},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        main->Data().SetCurrentDate(Day(2024, 4, 2));
        Shown shown{};
        script->Then([&](HWND dialog) {
            Pick(dialog, row.picker, row.date);
            shown = Look(dialog);
        });
        script->Press(IDCANCEL);
        Command(IDM_HISTORY);
        Expect(shown, Key(4, 2), Key(4, 7), L"5", L"Normal", true);
    }
}

TEST_F(HistoryDialog, ARefusedLengthJumpsBack) {
    Shown shown{};
    int position = 0;
    script->Then([&](HWND dialog) {
        Spin(dialog, IDC_PERIOD_LENGTH_SPIN, 6);  // the end would be tomorrow
        shown = Look(dialog);
        position = LOWORD(::SendDlgItemMessageW(dialog, IDC_PERIOD_LENGTH_SPIN, UDM_GETPOS, 0, 0));
    });
    script->Press(IDCANCEL);
    Command(IDM_HISTORY);
    Expect(shown, Key(5, 10), Key(5, 15), L"5", L"Normal", true);
    EXPECT_EQ(position, 5);
}

TEST_F(HistoryDialog, APickerWithoutADateChangesNothing) {
    Shown shown{};
    script->Then([&](HWND dialog) {
        NMDATETIMECHANGE change{};
        change.nmhdr = NMHDR{::GetDlgItem(dialog, IDC_START_DATE), IDC_START_DATE,
                             static_cast<UINT>(DTN_DATETIMECHANGE)};
        change.dwFlags = GDT_NONE;
        change.st = Day(2024, 4, 2);
        ::SendMessageW(dialog, WM_NOTIFY, IDC_START_DATE, reinterpret_cast<LPARAM>(&change));
        shown = Look(dialog);
    });
    script->Press(IDCANCEL);
    Command(IDM_HISTORY);
    EXPECT_EQ(shown.start, Key(5, 10));
}

TEST_F(HistoryDialog, AnOverlappingPeriodIsRefusedAndNothingIsWritten) {
    main->Data().SetCurrentDate(Day(2024, 4, 2));
    Shown afterAdd{};
    script->Press(IDOK);
    script->Then([&](HWND dialog) {
        afterAdd = Look(dialog);
        Pick(dialog, IDC_START_DATE, Day(2024, 4, 6));  // the 6th is in the first period, too
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    script->Press(IDCANCEL);
    Command(IDM_HISTORY);
    EXPECT_FALSE(afterAdd.mayAdd);
    EXPECT_EQ(main->Data().Bleeding().Count(), 5);
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_EQ(messages.boxes[0].text, L"Bleeding entry for the period exists!");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, UINT{MB_ICONEXCLAMATION});
}

TEST_F(HistoryDialog, OnlyAnAcceptedChangeEnablesAddAgain) {
    const struct {
        const char* label;
        void (*change)(HWND dialog);
        bool comesBack;
    } rows[] = {
        {"start", [](HWND dialog) { Pick(dialog, IDC_START_DATE, Day(2024, 4, 20)); }, true},
        {"end", [](HWND dialog) { Pick(dialog, IDC_END_DATE, Day(2024, 4, 8)); }, true},
        {"length", [](HWND dialog) { Spin(dialog, IDC_PERIOD_LENGTH_SPIN, 3); }, true},
        {"bleeding", [](HWND dialog) { Spin(dialog, IDC_BLEEDING_SPIN, 1); }, true},
        {"refused start", [](HWND dialog) { Pick(dialog, IDC_START_DATE, Day(2024, 5, 11)); },
         false},
        {"refused end", [](HWND dialog) { Pick(dialog, IDC_END_DATE, Day(2024, 4, 10)); }, false},
        {"the same length", [](HWND dialog) { Spin(dialog, IDC_PERIOD_LENGTH_SPIN, 5); }, false},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        UserDataTestAccess::Bleeding(main->Data()).Clear();
        main->Data().SetCurrentDate(Day(2024, 4, 2));
        Shown shown{};
        script->Press(IDOK);
        script->Then([&](HWND dialog) {
            EXPECT_FALSE(Look(dialog).mayAdd);
            row.change(dialog);
            shown = Look(dialog);
        });
        script->Press(IDCANCEL);
        Command(IDM_HISTORY);
        EXPECT_EQ(shown.mayAdd, row.comesBack);
    }
}

TEST_F(HistoryDialog, ClosingBringsThePredictionUpToDate) {
    script->Press(IDOK).Press(IDCANCEL);
    Command(IDM_HISTORY);
    EXPECT_TRUE(main->Data().Prediction().predictionUpToDate);
    EXPECT_NE(::IsWindowEnabled(main->Handle()), FALSE);
    EXPECT_GT(main->Data().Prediction().bleedingLevels.Count(), 0);
}

}  // namespace
}  // namespace lunara::test
