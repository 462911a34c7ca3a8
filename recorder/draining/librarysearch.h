#pragma once

#include <string>

namespace recorder {

/// What the dynamic loader would give a host that asks for the driver library by its name.
struct FoundLibrary
{
    std::string path;   ///< absolute; empty when there is none
    std::string places; ///< where was looked, for a message
};

/// Asks the host's own dynamic loader, which runs nothing of the host or of a library: LD_LIBRARY_PATH, the
/// host's RUNPATH, the cache, the default folders. A host that is a script has no RUNPATH.
/// \param host its path, or its name in PATH
/// \param tap path of the tap's exports, which are passed by in LD_LIBRARY_PATH, and never found
FoundLibrary findDriverLibrary(const std::string &host, const std::string &tap);

/// The file that posix_spawnp() starts for a host's name; empty when there is none.
std::string programFile(const std::string &host);

} // namespace recorder
