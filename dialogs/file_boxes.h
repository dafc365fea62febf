#pragma once

// Boxes about files that stay where they should not.

#include "storage/folder_files.h"

namespace lunara {

/// "Fail to delete file '<path>'".
void ShowFileStays(const WideString& path);

/// One box for each file and for the folder.
void ShowNotDeleted(const NotDeleted& left);

/// Says over `owner` (null for none) that a restore was cut off and cannot be ended yet.
void ShowRestoreCutOff(HWND owner);

}  // namespace lunara
