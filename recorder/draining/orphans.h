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

    /// Whether one of this session lives. Daemons have sessions of their own. To be called when the host has
    /// been waited for, as it takes what the others end with.
    bool areLeft() const;

private:
    std::set<pid_t> others; ///< children that were there before
};

} // namespace recorder
