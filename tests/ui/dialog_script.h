#pragma once

// Plays the user of a modal dialog. The call that shows such a dialog returns only when it is
// closed, so a test queues the user's steps beforehand, and a timer plays them from within the
// dialog's message loop.

#include <deque>
#include <functional>

#include "window/window.h"

namespace lunara::test {

class DialogScript {
  public:
    using Step = std::function<void(HWND dialog)>;

    DialogScript();
    DialogScript(const DialogScript&) = delete;
    DialogScript& operator=(const DialogScript&) = delete;
    /// Fails the test when steps were not played.
    ~DialogScript();

    /// Queues a step. It runs once a dialog of this thread is visible and every message that the
    /// step before it posted has been handled. A dialog that outlives the last step by three
    /// seconds is cancelled and fails the test; so a script without steps says that no dialog
    /// opens.
    DialogScript& Then(Step step);
    /// Queues a press of a button or check box.
    DialogScript& Press(int controlId);
    /// Queues the replacement of a field's text.
    DialogScript& Type(int controlId, const WCHAR* text);

    bool IsDone() const { return steps.empty(); }

  private:
    static void CALLBACK OnTick(HWND window, UINT message, UINT_PTR timer, DWORD ticks);
    void Tick();

    std::deque<Step> steps;
    UINT_PTR timer;
    int idleTicks = 0;
};

/// A visible dialog of this thread, the first that the system lists; null when there is none.
HWND VisibleDialog();

}  // namespace lunara::test
