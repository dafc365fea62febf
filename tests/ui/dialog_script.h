#pragma once

// Plays the user of dialogs that run message loops of their own: while such a loop waits, a timer
// runs the next step on the dialog that is on the screen.

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
    /// Fails the test when steps are left over.
    ~DialogScript();

    /// Adds a step, run when a dialog of this thread is visible and all that the step before it
    /// caused is done. A dialog that outlives the last step is closed, and the test fails.
    DialogScript& Then(Step step);
    /// Steps that press a button, and that type into a field.
    DialogScript& Press(int controlId);
    DialogScript& Type(int controlId, const WCHAR* text);

    bool IsDone() const { return steps.empty(); }

  private:
    static void CALLBACK OnTick(HWND window, UINT message, UINT_PTR timer, DWORD ticks);
    void Tick();

    std::deque<Step> steps;
    UINT_PTR timer;
    int idleTicks = 0;
};

/// The visible dialog of this thread; null when there is none.
HWND VisibleDialog();

}  // namespace lunara::test
