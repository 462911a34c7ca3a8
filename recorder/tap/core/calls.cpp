#include "calls.h"

#include "crossingflags.h"

namespace tap {

namespace {

ring::Crossing crossingOf(capture::Kind kind, const CallInfo &call, std::uint8_t flags,
                          const ArgumentBytes &bytes)
{
    ring::Crossing crossing;
    crossing.kind = static_cast<std::uint8_t>(kind);
    crossing.flags = flags | flagsOfCrossing();
    if (call.hasBoard)
        crossing.flags |= capture::BoardIsValid;
    if (bytes.isCut())
        crossing.flags |= capture::PayloadCut;
    if (bytes.hasUnread())
        crossing.flags |= capture::NotRead;
    crossing.call = call.number;
    crossing.board = call.hasBoard ? call.board : 0;
    crossing.thread = threadId();
    crossing.originalLength = bytes.originalLength();
    return crossing;
}

} // namespace

ring::Put putCall(ring::Control &control, const CallInfo &call, std::uint8_t flags,
                  const ArgumentBytes &bytes)
{
    return ring::put(control, crossingOf(capture::Kind::Call, call, flags, bytes), bytes.data(),
                     bytes.size());
}

void putReturn(ring::Control &control, const CallInfo &call, unsigned flags, std::int32_t result,
               ring::Put called, const ArgumentBytes &bytes)
{
    ring::Crossing crossing =
        crossingOf(capture::Kind::Return, call, static_cast<std::uint8_t>(flags), bytes);
    crossing.result = result;
    crossing.link = called.crossing;
    crossing.isCallLost = called.isLost;
    ring::put(control, crossing, bytes.data(), bytes.size());
}

} // namespace tap
