#include "app/prediction_warning.h"

#include <memory>

#include "platform/clock.h"
#include "window/messages.h"

namespace lunara {
namespace {

constexpr UINT StringInsufficientData = 50001;

}  // namespace

void ShowPredictionWarning(UserData& data, WCHAR* text, UINT flags) {
    const std::unique_ptr<WCHAR[]> owned(text);
    if (text != nullptr && data.TakeWarningTurn(TickCount())) {
        ShowText(nullptr, text, CaptionWarning, flags | MB_ICONEXCLAMATION);
    }
}

void ShowInsufficientDataWarning(UserData& data, UINT flags) {
    if (data.TakeWarningTurn(TickCount())) {
        ShowMessage(nullptr, StringInsufficientData, CaptionWarning, flags | MB_ICONEXCLAMATION);
    }
}

}  // namespace lunara
