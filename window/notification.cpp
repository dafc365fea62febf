#include "window/notification.h"

#include <algorithm>

namespace lunara {

bool NotificationSink::GetRange(NMHDR&, int&, int&) { return false; }

LRESULT ParentSink::Notify(NMHDR& record) {
    return ::SendMessageW(::GetParent(record.hwndFrom), WM_NOTIFY, record.idFrom,
                          reinterpret_cast<LPARAM>(&record));
}

NotifyingControl::NotifyingControl() { AttachSink(parentSink); }

void NotifyingControl::AttachSink(NotificationSink& sink) { sinks.push_back(&sink); }

void NotifyingControl::DetachSink(NotificationSink& sink) {
    sinks.erase(std::remove(sinks.begin(), sinks.end(), &sink), sinks.end());
}

NMHDR NotifyingControl::MakeHeader(UINT code) const {
    NMHDR header{};
    header.hwndFrom = Handle();
    header.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(Handle()));
    header.code = code;
    return header;
}

bool NotifyingControl::NotifyAll(NMHDR& record) {
    bool answered = false;
    NotifyEach(record, [&answered] { answered = true; });
    return answered;
}

bool NotifyingControl::AskRange(NMHDR& record, int& minimum, int& maximum) {
    bool answered = false;
    for (std::size_t index = 0; index < sinks.size(); ++index) {
        answered |= sinks[index]->GetRange(record, minimum, maximum);
    }
    return answered;
}

}  // namespace lunara
