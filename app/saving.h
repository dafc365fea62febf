#pragma once

// Saving the diary with the held password, as a backup and the end of the program do.

#include "app/sign_in.h"

namespace lunara {

/// Saves what is dirty. As long as that fails, says which file and why, and asks whether to try
/// again; so, too, while a restore that was cut off cannot be ended, which comes first. 1, or 0
/// when she gave up. The password has to be held, and is masked afterwards.
int SaveWithHeldPassword(SignedInUser user);

}  // namespace lunara
