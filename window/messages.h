#pragma once

// Message boxes. Texts are string resources looked up by id; an error travels as such an id and
// becomes text only here.

#include "platform/message_text.h"

namespace lunara {

/// Captions of message boxes that are not the program's title.
inline constexpr WCHAR CaptionWarning[] = TEXT("Warning");
inline constexpr WCHAR CaptionError[] = TEXT("Error");
inline constexpr WCHAR CaptionMessage[] = TEXT("Message");

/// The one function that shows a message box. Returns the button's id.
int ShowText(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags);

/// Receives every message box instead of the user, and answers it.
class MessageRecorder {
  public:
    MessageRecorder() = default;
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
    virtual ~MessageRecorder() = default;
    virtual int Show(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags) = 0;
};
/// Null shows boxes to the user again.
void SetMessageRecorder(MessageRecorder* recorder);

/// Shows string `id` (up to 255 units); returns 0 and shows nothing when there is no such string.
int ShowMessage(HWND owner, UINT id, const WCHAR* caption, UINT flags);
/// The same over the main window with the program's title (string 1) as caption. This and the two
/// below complete the message boxes; the program itself does not call them.
int ShowAppMessage(UINT id, UINT flags);
/// One box with the texts (up to 63 units each) of all bits set, string firstId + bit, a line each,
/// over the main window. Returns 1 without a box when no text was gathered.
int ShowFlagMessages(UINT firstId, DWORD bits, UINT flags);
/// The system's text for the last error, for diagnostics.
void ShowSystemError();

}  // namespace lunara
