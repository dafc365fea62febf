#pragma once

#include "platform/text.h"

namespace lunara {

/// The user's documents folder, without a separator at its end; empty when the system has none. It
/// stands for the device's "\My Documents". On other systems than Windows: XDG_DOCUMENTS_DIR of the
/// environment, or "Documents" in the home folder.
WideString DocumentsFolder();

/// Makes `folder` the answer of DocumentsFolder, for tests. Empty asks the system again.
void SetDocumentsFolder(WideView folder);

}  // namespace lunara
