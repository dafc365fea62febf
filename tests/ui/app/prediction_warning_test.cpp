// Warnings about the prediction: their box, and the limit of one box an hour.

#include "app/prediction_warning.h"

#include "platform/clock.h"
#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

constexpr DWORD Start = 5'000'000;
constexpr DWORD HourMs = 3'600'000;

class PredictionWarning : public UiTest {
  protected:
    /// Shows a warning at that tick count.
    void ShowAt(DWORD ticks, const WCHAR* text) {
        SetTickCount(ticks);
        const std::size_t size = std::wstring(text).size() + 1;
        auto* copy = new WCHAR[size];
        std::copy_n(text, size, copy);
        ShowPredictionWarning(state, copy, MB_OK);
    }
    CyclePredictor state;
};

TEST_F(PredictionWarning, TheBoxHasNoOwnerAndAnExclamationMark) {
    ShowAt(Start, TEXT("Too few. "));
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].owner, nullptr);
    EXPECT_EQ(messages.boxes[0].text, L"Too few. ");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
}

TEST_F(PredictionWarning, ThereIsOneBoxAnHour) {
    ShowAt(Start, TEXT("first"));
    ShowAt(Start + HourMs, TEXT("within the hour"));
    EXPECT_EQ(messages.boxes.size(), 1U);
    ShowAt(Start + HourMs + 1, TEXT("later"));
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_EQ(messages.boxes[1].text, L"later");
}

TEST_F(PredictionWarning, ANullTextShowsNothingAndDoesNotStartTheHour) {
    SetTickCount(Start);
    ShowPredictionWarning(state, nullptr, MB_OK);
    EXPECT_TRUE(messages.boxes.empty());
    ShowAt(Start, TEXT("first"));
    EXPECT_EQ(messages.boxes.size(), 1U);
}

TEST_F(PredictionWarning, TheInsufficientDataWarningSharesTheHour) {
    ShowAt(Start, TEXT("first"));
    SetTickCount(Start + HourMs);
    ShowInsufficientDataWarning(state, MB_OK);
    EXPECT_EQ(messages.boxes.size(), 1U);
    SetTickCount(Start + HourMs + 1);
    ShowInsufficientDataWarning(state, MB_OK);
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_EQ(messages.boxes[1].text, L"Insufficient statistical data. ");
    EXPECT_EQ(messages.boxes[1].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
}

}  // namespace
}  // namespace lunara::test
