#pragma once

// Message boxes about files that could not be deleted or moved.

#include "storage/folder_files.h"

namespace lunara {

/// Shows "Fail to delete file '<path>'".
void ShowFileStays(const WideString& path);

/// Shows one box for each file in `left`, then one for the folder if that could not be deleted.
void ShowNotDeleted(const NotDeleted& left);

/// Says that an interrupted restore cannot be completed yet, because files are in use. `owner`: the
/// window below the box, null for none.
void ShowRestoreCutOff(HWND owner);

}  // namespace lunara
