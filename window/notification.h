#pragma once

// How a custom control talks to its owner: it hands a record that begins with an NMHDR to each of
// its sinks in the order in which they were attached.

#include <vector>

#include "window/window.h"

namespace lunara {

class NotificationSink {
  public:
    NotificationSink() = default;
    NotificationSink(const NotificationSink&) = delete;
    NotificationSink& operator=(const NotificationSink&) = delete;
    virtual ~NotificationSink() = default;

    /// `record` is the head of the control's own record; the answer's meaning is the record's.
    virtual LRESULT Notify(NMHDR& record) = 0;
    /// The chart's direct question for its default value range; false when it is not answered.
    virtual bool GetRange(NMHDR& record, int& minimum, int& maximum);
};

/// Sends the record to the parent of the control as WM_NOTIFY.
class ParentSink : public NotificationSink {
  public:
    LRESULT Notify(NMHDR& record) override;
};

/// A control with sinks. It starts with one that delivers to its parent.
class NotifyingControl : public Window {
  public:
    NotifyingControl();

    void AttachSink(NotificationSink& sink);
    void DetachSink(NotificationSink& sink);

  protected:
    /// A header for this control with the given code.
    NMHDR Header(UINT code) const;
    /// Hands the record to every sink; whether at least one answered non-zero.
    bool NotifyAll(NMHDR& record);
    /// Hands the record to every sink and calls `answered` after each non-zero answer.
    template <typename Answered>
    void NotifyEach(NMHDR& record, Answered answered) {
        // By index: a sink that is being asked may attach another one.
        for (std::size_t index = 0; index < sinks.size(); ++index) {
            if (sinks[index]->Notify(record) != 0) {
                answered();
            }
        }
    }

    /// Asks every sink for the range, the last answer winning; whether at least one answered.
    bool AskRange(NMHDR& record, int& minimum, int& maximum);

    std::vector<NotificationSink*> sinks;

  private:
    ParentSink parentSink;
};

}  // namespace lunara
