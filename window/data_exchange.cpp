#include "window/data_exchange.h"

#include "window/window.h"

namespace lunara {

HWND DataExchange::SelectControl(int controlId) {
    control = ::GetDlgItem(owner.Handle(), controlId);
    return control;
}

void ExchangeText(DataExchange& exchange, int controlId, WCHAR* buffer, int maxChars) {
    const HWND control = exchange.SelectControl(controlId);
    if (control == nullptr) {
        return;
    }
    if (exchange.IsSaving()) {
        ::GetWindowTextW(control, buffer, maxChars);
    } else {
        ::SetWindowTextW(control, buffer);
    }
}

int LimitText(DataExchange& exchange, const WCHAR* text, int maxChars) {
    const int length = ::lstrlenW(text);
    if (exchange.IsSaving() && length > maxChars) {
        return length;
    }
    ::SendMessageW(exchange.Current(), EM_LIMITTEXT, static_cast<WPARAM>(maxChars), 0);
    return 0;
}

void ExchangeCheck(DataExchange& exchange, int controlId, int& value) {
    const HWND control = exchange.SelectControl(controlId);
    if (exchange.IsSaving()) {
        value = static_cast<int>(::SendMessageW(control, BM_GETCHECK, 0, 0));
        return;
    }
    if (value < BST_UNCHECKED || value > BST_INDETERMINATE) {
        value = BST_UNCHECKED;
    }
    ::SendMessageW(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void ExchangeComboText(DataExchange& exchange, int controlId, WCHAR* buffer) {
    const HWND control = exchange.SelectControl(controlId);
    if (exchange.IsSaving()) {
        const auto selected = static_cast<WPARAM>(::SendMessageW(control, CB_GETCURSEL, 0, 0));
        // CB_GETLBTEXTLEN is sent and its result ignored: the caller guarantees room for the
        // longest item.
        ::SendMessageW(control, CB_GETLBTEXTLEN, selected, 0);
        ::SendMessageW(control, CB_GETLBTEXT, selected, reinterpret_cast<LPARAM>(buffer));
    } else {
        // Starts at index 0, not -1: CB_SELECTSTRING searches from the item after the given index
        // and wraps around, so item 0 is tried last. When several items begin with the text, a
        // later one wins over item 0.
        ::SendMessageW(control, CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>(buffer));
    }
}

}  // namespace lunara
