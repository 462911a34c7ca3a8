#include "listeners.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <utility>

#include "crossingflags.h"
#include "header.h"
#include "listenernumbers.h"
#include "payloads.h"
#include "session.h"

namespace tap {

namespace {

constexpr std::size_t poolSize = 32; // of either sort

template <typename Function>
std::array<std::atomic<Function>, poolSize> functions{};

void recordReport(ring::Control &control, std::uint32_t listener, int device, const unsigned char *data,
                  unsigned int length)
{
    ring::Crossing crossing;
    crossing.kind = static_cast<std::uint8_t>(capture::Kind::Report);
    crossing.flags = static_cast<std::uint8_t>(flagsOfCrossing() | capture::BoardIsValid);
    crossing.board = device;
    crossing.thread = threadId();
    crossing.link = listener;
    crossing.originalLength = length;
    crossing.mayUseReserve = false;
    ring::Piece piece{data, length};
    if (!data) {
        crossing.flags |= capture::PointerWasNull;
        piece.length = 0;
    } else if (length > capture::maxReportLength) {
        crossing.flags |= capture::PayloadCut;
        piece.length = capture::maxReportLength;
    }
    ring::countReport(control, device, ring::put(control, crossing, &piece, 1).isLost);
}

void recordHotplug(ring::Control &control, std::uint32_t listener)
{
    ring::Crossing crossing;
    crossing.kind = static_cast<std::uint8_t>(capture::Kind::Hotplug);
    crossing.flags = flagsOfCrossing();
    crossing.thread = threadId();
    crossing.link = listener;
    ring::put(control, crossing, nullptr, 0);
}

template <std::size_t Index>
void dataTrampoline(int device, const unsigned char *data, unsigned int length, void *context)
{
    const int error = errno;
    const OrvexDataCallback function = functions<OrvexDataCallback>[Index].load(std::memory_order_acquire);
    if (ring::Control *control = recording())
        recordReport(*control, listenerNumber(reinterpret_cast<const void *>(function), context), device,
                     data, length);
    errno = error;
    function(device, data, length, context);
}

template <std::size_t Index>
void pnpTrampoline(void *context)
{
    const int error = errno;
    const OrvexPnpCallback function = functions<OrvexPnpCallback>[Index].load(std::memory_order_acquire);
    if (ring::Control *control = recording())
        recordHotplug(*control, listenerNumber(reinterpret_cast<const void *>(function), context));
    errno = error;
    function(context);
}

template <std::size_t... Index>
constexpr std::array<OrvexDataCallback, poolSize> dataPool(std::index_sequence<Index...>)
{
    return {dataTrampoline<Index>...};
}

template <std::size_t... Index>
constexpr std::array<OrvexPnpCallback, poolSize> pnpPool(std::index_sequence<Index...>)
{
    return {pnpTrampoline<Index>...};
}

constexpr auto dataTrampolines = dataPool(std::make_index_sequence<poolSize>());
constexpr auto pnpTrampolines = pnpPool(std::make_index_sequence<poolSize>());

/// \param mayTake takes a free trampoline for a function that has none
template <typename Function>
Function find(Function function, const std::array<Function, poolSize> &trampolines, bool mayTake)
{
    if (!function)
        return nullptr;
    for (std::size_t i = 0; i < poolSize; ++i) {
        Function found = functions<Function>[i].load(std::memory_order_acquire);
        if (!found && mayTake && functions<Function>[i].compare_exchange_strong(found, function))
            return trampolines[i];
        if (found == function)
            return trampolines[i];
        if (!found)
            return function;
    }
    return function;
}

template <typename Function>
Function findOrTake(Function function, const std::array<Function, poolSize> &trampolines)
{
    const Function found = find(function, trampolines, true);
    ring::Control *control = recording();
    if (found == function && function && control && control->unrecordedCallbacks.fetch_add(1) == 0)
        say("a callback is not recorded: there are more than 32 of its sort");
    return found;
}

} // namespace

OrvexDataCallback trampolineFor(OrvexDataCallback function)
{
    return findOrTake(function, dataTrampolines);
}

OrvexPnpCallback trampolineFor(OrvexPnpCallback function)
{
    return findOrTake(function, pnpTrampolines);
}

OrvexDataCallback knownTrampoline(OrvexDataCallback function)
{
    return find(function, dataTrampolines, false);
}

OrvexPnpCallback knownTrampoline(OrvexPnpCallback function)
{
    return find(function, pnpTrampolines, false);
}

} // namespace tap
