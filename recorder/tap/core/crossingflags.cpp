#include "crossingflags.h"

#include "header.h"
#include "session.h"

namespace tap {

std::atomic<int (*)()> replayIsOn{nullptr};

std::uint8_t flagsOfCrossing()
{
    unsigned flags = 0;
    if (callDepth() > 0)
        flags |= capture::WithinCall;
    const auto isOn = replayIsOn.load(std::memory_order_acquire);
    if (isOn && isOn() != 0)
        flags |= capture::FromReplay;
    return static_cast<std::uint8_t>(flags);
}

} // namespace tap
