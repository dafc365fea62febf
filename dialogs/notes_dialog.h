#pragma once

// The dialog that edits the note of one day: two check marks and a text. It does not know the data
// set: the caller fills in the fields before, and stores them after IDOK.

#include <array>
#include <cstdint>

#include "platform/pocketpc/aygshell.h"
#include "records/collections.h"
#include "window/dialog.h"

namespace lunara {

class NotesDialog : public Dialog {
  public:
    /// Starts with an empty note of today.
    explicit NotesDialog(Window* owner = nullptr);

    BOOL OnInitDialog() override;
    void DoDataExchange(DataExchange& exchange) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    std::int32_t cramps = 0;  // 0 or 1: the check box
    std::int32_t pms = 0;     // 0 or 1: the check box
    std::array<WCHAR, NoteTextCapacity> text{};
    SYSTEMTIME date;  // the day in the heading; day of week included

  private:
    void ShowDate();
    LRESULT OnColorStatic(HDC dc, HWND control);

    SHACTIVATEINFO activation{};
};

}  // namespace lunara
