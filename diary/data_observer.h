#pragma once

// The interface through which views take part in changes of the data set: asked before each one,
// told after it.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

class UserData;

/// A view that is asked before a change of the data set and told after it. The base allows every
/// change and ignores it. A can-change operation returns 0 to refuse and must not change the data
/// set; the others return nothing and may.
class DataObserver {
  public:
    DataObserver() = default;
    DataObserver(const DataObserver&) = delete;
    DataObserver& operator=(const DataObserver&) = delete;
    virtual ~DataObserver() = default;

    virtual int CanChangeDate(UserData& /*data*/, const SYSTEMTIME& /*current*/,
                              const SYSTEMTIME& /*wanted*/) {
        return 1;
    }
    virtual void DateChanged(UserData& /*data*/, const SYSTEMTIME& /*old*/,
                             const SYSTEMTIME& /*current*/) {}
    virtual int CanChangeTemperature(UserData& /*data*/, std::int32_t /*old*/,
                                     std::int32_t /*wanted*/) {
        return 1;
    }
    virtual void TemperatureChanged(UserData& /*data*/, std::int32_t /*value*/) {}
    virtual int CanChangeBleeding(UserData& /*data*/, std::int32_t /*old*/,
                                  std::int32_t /*wanted*/) {
        return 1;
    }
    virtual void BleedingChanged(UserData& /*data*/, std::int32_t /*value*/) {}
    virtual int CanChangeNoteFlags(UserData& /*data*/, std::int32_t /*old*/,
                                   std::int32_t /*wanted*/) {
        return 1;
    }
    virtual void NoteFlagsChanged(UserData& /*data*/, std::int32_t /*flags*/) {}
    /// `old` is null when the day has no note; `wanted` is null or "" when the note is to be
    /// deleted. Both are valid until the call returns.
    virtual int CanChangeNoteText(UserData& /*data*/, const WCHAR* /*old*/,
                                  const WCHAR* /*wanted*/) {
        return 1;
    }
    virtual void NoteTextChanged(UserData& /*data*/, const WCHAR* /*text*/) {}
};

}  // namespace lunara
