#pragma once

#include "platform/win32.h"

namespace lunara {

class Window;

/// One transfer between a window object's fields and its controls. The operations below look their
/// control up by id and move one value in the exchange's direction; a dialog lists its fields once.
class DataExchange {
  public:
    DataExchange(bool saving, Window& window) : save(saving), owner(window) {}

    bool IsSaving() const { return save; }
    /// The control with that id, which becomes the current control; null when there is none.
    HWND Take(int controlId);
    HWND Current() const { return control; }

  private:
    bool save;
    Window& owner;
    HWND control = nullptr;
};

/// `maxChars` code units with the terminator.
void ExchangeText(DataExchange& exchange, int controlId, WCHAR* buffer, int maxChars);
/// Limits what can be typed into the current control. When saving a text longer than `maxChars`,
/// does nothing and returns the length; otherwise returns 0.
int LimitText(DataExchange& exchange, const WCHAR* text, int maxChars);
/// A value outside 0..2 is loaded, and stored back, as 0.
void ExchangeCheck(DataExchange& exchange, int controlId, int& value);
/// The text of the selected item; `buffer` must hold the longest item with its terminator.
void ExchangeComboText(DataExchange& exchange, int controlId, WCHAR* buffer);

}  // namespace lunara
