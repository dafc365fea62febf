#pragma once

// Saving the diary with the held password: before a backup and at the end of the program.

#include "app/sign_in.h"

namespace lunara {

/// Ends an interrupted restore, if there is one, and saves every dirty collection. When either
/// fails, a message box names the file and the reason and offers to try again. Returns 1, or 0 when
/// the user gives up. Precondition: the password is held and masked; it is masked again afterwards.
int SaveWithHeldPassword(SignedInUser user);

}  // namespace lunara
