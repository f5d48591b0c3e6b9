// The process's own folder for temporary files: only its user may enter it, so that nothing can be
// planted in it and names in it need not be secret.
#pragma once

#include "SupportDefs.h"

#include <string>

namespace folders {
// Sets path to the folder, which is made below $TMPDIR or /tmp when it is first asked for, and
// again if it has gone. Where that fails path is where it would lie, a line on standard error says
// why, once for each reason, and the error is returned.
//
// It goes, with all in it, at every end of the process but SIGKILL. What that leaves is removed by
// the user's next program, when that starts.
[[nodiscard]] status_t OwnTemporary(std::string& path);

// Removes the folder; from now on there is none. For ends of the process that run no exit handlers;
// may be called in a signal handler.
void RemoveOwnTemporary();
} // namespace folders
