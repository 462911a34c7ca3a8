#pragma once

#include <sys/types.h>

namespace recorder {

/// Within which a group has got a signal. `timeout` sends one to its child first and to the group then.
inline constexpr int groupSignalMs = 5;

/// A process of its own that only takes signals sent to the whole process group. So one that the host has got
/// as well is told from one that was sent to the recorder alone. It ends with the recorder, however that
/// ends.
class GroupWitness
{
public:
    GroupWitness();
    ~GroupWitness();
    GroupWitness(const GroupWitness &) = delete;
    GroupWitness &operator=(const GroupWitness &) = delete;

    /// -1 when it could not be started; nothing is seen then.
    pid_t id() const { return process; }
    /// Whether the group was sent the signal since this was asked last.
    bool hasSeen(int number);

private:
    void start();
    void end();
    unsigned long long pending() const;

    pid_t process = -1;
    unsigned long long seen = 0; ///< a bit for each signal
};

} // namespace recorder
