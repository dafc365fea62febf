#pragma once

// Dialog data exchange: one list of fields per dialog (`Window::DoDataExchange`), run in either
// direction by `Window::UpdateData`.

#include "platform/win32.h"

namespace lunara {

class Window;

/// One run of the exchange between a window object's fields and its controls: controls to fields
/// when saving, fields to controls otherwise. Each `Exchange...` function moves one value in that
/// direction.
class DataExchange {
  public:
    DataExchange(bool saving, Window& window) : save(saving), owner(window) {}

    bool IsSaving() const { return save; }
    /// Finds the control `controlId` and makes it the current control. Null when the window has no
    /// such control.
    HWND SelectControl(int controlId);
    /// The control of the last `Take`; null before the first.
    HWND Current() const { return control; }

  private:
    bool save;
    Window& owner;
    HWND control = nullptr;
};

/// Moves the text of an edit control or label. `maxChars`: size of `buffer` in UTF-16 units,
/// terminator included. Does nothing when there is no such control.
void ExchangeText(DataExchange& exchange, int controlId, WCHAR* buffer, int maxChars);
/// Limits typing in the current control (the one of the preceding `ExchangeText`) to `maxChars`
/// UTF-16 units without the terminator, and returns 0. When saving a `text` that is longer already,
/// sets no limit and returns its length.
int LimitText(DataExchange& exchange, const WCHAR* text, int maxChars);
/// Moves the state of a check box: BST_UNCHECKED (0), BST_CHECKED (1) or BST_INDETERMINATE (2).
/// When loading, a `value` outside 0..2 is set to 0 first.
void ExchangeCheck(DataExchange& exchange, int controlId, int& value);
/// Moves the selection of a combo box as text. `buffer` must hold the longest item with its
/// terminator. Saving without a selection leaves `buffer` alone; loading selects an item that
/// begins with the text.
void ExchangeComboText(DataExchange& exchange, int controlId, WCHAR* buffer);

}  // namespace lunara
