#pragma once

#include "platform/win32.h"

namespace lunara {

/// Starts the device's help viewer at an anchor of the help file, such as
/// "Lunara.htm#Lunara_help". Whether there is a viewer is not looked at.
void StartHelp(const WCHAR* anchor);

/// Receives every start of the help viewer instead of the system.
class HelpRecorder {
  public:
    HelpRecorder() = default;
    HelpRecorder(const HelpRecorder&) = delete;
    HelpRecorder& operator=(const HelpRecorder&) = delete;
    virtual ~HelpRecorder() = default;
    virtual void Start(const WCHAR* program, const WCHAR* commandLine) = 0;
};
/// Null starts the viewer again.
void SetHelpRecorder(HelpRecorder* recorder);

}  // namespace lunara
