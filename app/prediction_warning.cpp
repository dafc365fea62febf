#include "app/prediction_warning.h"

#include <memory>

#include "cycle/predictor.h"
#include "platform/clock.h"
#include "window/messages.h"

namespace lunara {
namespace {

constexpr UINT StringInsufficientData = 50001;

}  // namespace

void ShowPredictionWarning(CyclePredictor& state, WCHAR* text, UINT flags) {
    const std::unique_ptr<WCHAR[]> owned(text);
    if (text != nullptr && TakeWarningTurn(state, TickCount())) {
        ShowText(nullptr, text, CaptionWarning, flags | MB_ICONEXCLAMATION);
    }
}

void ShowInsufficientDataWarning(CyclePredictor& state, UINT flags) {
    if (TakeWarningTurn(state, TickCount())) {
        ShowMessage(nullptr, StringInsufficientData, CaptionWarning, flags | MB_ICONEXCLAMATION);
    }
}

}  // namespace lunara
