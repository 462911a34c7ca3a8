#pragma once

#include <set>
#include <sys/types.h>

namespace recorder {

/// While in scope, descendants whose parents have ended become children of this process, so that a host which
/// a wrapper script left behind is known before it opens the library.
class Orphans
{
public:
    Orphans();
    ~Orphans();
    Orphans(const Orphans &) = delete;
    Orphans &operator=(const Orphans &) = delete;

    /// Takes what those have ended with that nobody else waits for.
    /// \param host, witness which are waited for elsewhere
    static void reap(pid_t host, pid_t witness);
    /// Whether one lives that has kept the process session. Daemons have sessions of their own.
    /// \param witness does not count
    bool areLeft(pid_t witness) const;

private:
    std::set<pid_t> others; ///< children that were there before
};

} // namespace recorder
