#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hostrun.h"
#include "sharedring.h"
#include "slices.h"

namespace recorder {

struct RecordOptions
{
    std::vector<std::string> command; ///< the host and its arguments
    std::string output;               ///< path of the capture
    std::string tap;                  ///< path of the tap's exports
    std::string driver; ///< absolute path of the real library; empty for the host's or the loader's
    std::string note;
    std::optional<Trigger> trigger; ///< keeps what lies around an event, and nothing else
    std::size_t ringSize = defaultRingSize;
};

struct RecordResult
{
    int status = 0;                 ///< that `padscope record` ends with
    std::vector<std::string> lines; ///< for standard error
};

/// Runs the host with the tap, and writes what crosses until both the host and the process that holds the
/// library have ended. \param report called once a second
RecordResult record(const RecordOptions &options, const std::function<void(const Progress &)> &report);

} // namespace recorder
