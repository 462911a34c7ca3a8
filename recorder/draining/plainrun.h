#pragma once

#include <string>
#include <vector>

#include "hostprocess.h"

namespace recorder {

struct PlainRunResult
{
    int status = 0;     ///< the host's, or 128 + n after signal n
    int startError = 0; ///< error number of a start that failed
};

/// Runs a host until it ends, and records nothing. It runs as it would alone; SIGINT, SIGTERM and SIGHUP
/// that were meant for this process are passed on to it.
PlainRunResult runPlainly(const std::vector<std::string> &command,
                          const HostProcess::Environment &environment);

} // namespace recorder
