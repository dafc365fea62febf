// Answers for the shell until its own sources are linked.

#include "platform/pocketpc/aygshell.h"

BOOL SHInitDialog(SHINITDLGINFO*) { return FALSE; }
