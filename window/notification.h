#pragma once

// Notifications of the custom controls. A control passes a record that begins with an NMHDR to each
// of its sinks, in the order in which they were attached. The first sink sends it to the parent
// window as WM_NOTIFY.

#include <vector>

#include "window/window.h"

namespace lunara {

/// Receives a control's notifications.
class NotificationSink {
  public:
    NotificationSink() = default;
    NotificationSink(const NotificationSink&) = delete;
    NotificationSink& operator=(const NotificationSink&) = delete;
    virtual ~NotificationSink() = default;

    /// Handles a notification. `record` is the header of the control's own record for
    /// `record.code`, which also defines what the result means; 0 is no answer.
    virtual LRESULT Notify(NMHDR& record) = 0;
    /// Answers the chart's question for its default value range; false, with both values left
    /// alone, when this sink does not answer. The base does not.
    virtual bool GetRange(NMHDR& record, int& minimum, int& maximum);
};

/// Sends each record to the control's parent window as WM_NOTIFY.
class ParentSink : public NotificationSink {
  public:
    LRESULT Notify(NMHDR& record) override;
};

/// Base of the controls that send notifications. Its first sink is a `ParentSink`.
class NotifyingControl : public Window {
  public:
    NotifyingControl();

    /// Appends `sink`, which must outlive the control or be detached.
    void AttachSink(NotificationSink& sink);
    /// Removes `sink` and keeps the order of the others; ignores a sink that is not attached. A
    /// sink must not detach one while it is notified: the sink after that one would be skipped.
    void DetachSink(NotificationSink& sink);

  protected:
    /// A notification header with this control's handle, its id and `code`.
    NMHDR MakeHeader(UINT code) const;
    /// Passes the record to every sink. Returns whether at least one answered non-zero.
    bool NotifyAll(NMHDR& record);
    /// Passes the record to every sink and calls `answered` after each non-zero answer.
    template <typename Answered>
    void NotifyEach(NMHDR& record, Answered answered) {
        // By index, not by iterator: a sink may attach another one while it is notified.
        for (std::size_t index = 0; index < sinks.size(); ++index) {
            if (sinks[index]->Notify(record) != 0) {
                answered();
            }
        }
    }

    /// Asks every sink for the range; the last answer wins. Returns whether at least one answered.
    bool AskRange(NMHDR& record, int& minimum, int& maximum);

    std::vector<NotificationSink*> sinks;

  private:
    ParentSink parentSink;
};

}  // namespace lunara
