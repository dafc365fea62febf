#pragma once

// Edits the note of one day: two marks and a text. It only exchanges values with its controls; the
// caller reads the day's note from the data set before, and stores it afterwards.

#include <array>
#include <cstdint>

#include "platform/pocketpc/aygshell.h"
#include "records/collections.h"
#include "window/dialog.h"

namespace lunara {

class NotesDialog : public Dialog {
  public:
    /// For the note of today, empty.
    explicit NotesDialog(Window* owner = nullptr);

    BOOL OnInitDialog() override;
    void DoDataExchange(DataExchange& exchange) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    std::int32_t cramps = 0;  // 0 or 1
    std::int32_t pms = 0;     // 0 or 1
    std::array<WCHAR, NoteTextCapacity> text{};
    SYSTEMTIME date;

  private:
    void ShowDate();
    LRESULT OnColorStatic(HDC dc, HWND control);

    SHACTIVATEINFO activation{};
};

}  // namespace lunara
