#pragma once

#include "platform/text.h"

namespace lunara {

/// The user's documents folder, without a separator at its end; empty when the system has none. It
/// stands for the device's "\My Documents".
WideString DocumentsFolder();

/// From here on `folder` is the answer; for tests. Empty asks the system again.
void SetDocumentsFolder(WideView folder);

}  // namespace lunara
