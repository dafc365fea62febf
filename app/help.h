#pragma once

// Starting the help viewer, with a recorder in its place for tests.

#include "platform/win32.h"

namespace lunara {

/// Starts the device's help viewer at an anchor of the help file, such as
/// "Lunara.htm#Lunara_help". Does nothing when the viewer is missing, as on a desktop.
void StartHelp(const WCHAR* anchor);

/// Receives every start of the help viewer in the system's place, for tests.
class HelpRecorder {
  public:
    HelpRecorder() = default;
    HelpRecorder(const HelpRecorder&) = delete;
    HelpRecorder& operator=(const HelpRecorder&) = delete;
    virtual ~HelpRecorder() = default;
    /// `program`: the viewer's file name. `commandLine`: the anchor.
    virtual void Start(const WCHAR* program, const WCHAR* commandLine) = 0;
};
/// Hands all later starts to `recorder`, which must outlive its use; null starts the viewer again.
void SetHelpRecorder(HelpRecorder* recorder);

}  // namespace lunara
