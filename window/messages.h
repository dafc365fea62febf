#pragma once

// Message boxes. Most texts are string resources; the diary reports an error as a string id, which
// becomes text only here.

#include "platform/message_text.h"

namespace lunara {

/// Captions of message boxes that do not show the program's title.
inline constexpr WCHAR CaptionWarning[] = TEXT("Warning");
inline constexpr WCHAR CaptionError[] = TEXT("Error");
inline constexpr WCHAR CaptionMessage[] = TEXT("Message");

/// Shows a message box; every box of the program goes through this function. `flags`: MB_ values.
/// A box without an `owner` is task-modal. Returns the id of the button chosen, 0 when no box could
/// be shown.
int ShowText(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags);

/// Stands in for the user in tests: receives every message box and returns the answer.
class MessageRecorder {
  public:
    MessageRecorder() = default;
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
    virtual ~MessageRecorder() = default;
    virtual int Show(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags) = 0;
};
/// Hands all later message boxes to `recorder`, which must outlive its use; null shows them to the
/// user again.
void SetMessageRecorder(MessageRecorder* recorder);

/// Shows string resource `id`, cut to 255 units. Returns the button's id; 0, with nothing shown,
/// when there is no such string.
int ShowMessage(HWND owner, UINT id, const WCHAR* caption, UINT flags);
/// Shows string resource `id`, cut to 255 units, over the main window with the program's title
/// (string 1) as caption. Returns the button's id; 0, with nothing shown, when a string is missing.
int ShowAppMessage(UINT id, UINT flags);
/// Shows one box over the main window with a line for each set bit of `bits`, lowest first: string
/// resource firstId + bit number (0..31), cut to 63 units. Bits without a string are skipped.
/// Returns the button's id; 1, with nothing shown, when there is no line; 0 when the program's
/// title (string 1) is missing.
int ShowFlagMessages(UINT firstId, DWORD bits, UINT flags);
/// Shows the system's text for the thread's last error over the main window, or nothing when the
/// system has no text for it. For diagnostics.
void ShowSystemError();

}  // namespace lunara
