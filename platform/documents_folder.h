#pragma once

// The folder below which the program keeps backups.

#include "platform/text.h"

namespace lunara {

/// The user's documents folder, without a separator at its end; empty when the system has none. It
/// replaces the device's "\My Documents". On POSIX systems, the environment variable
/// XDG_DOCUMENTS_DIR, or else "Documents" in the home folder.
WideString DocumentsFolder();

/// Makes DocumentsFolder return `folder`, for tests; an empty `folder` ends that.
void SetDocumentsFolder(WideView folder);

}  // namespace lunara
