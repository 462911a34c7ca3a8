#include "torture/packetcount.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <new>

#include "datapacket.h"
#include "torture/inspect.h"

namespace {

std::atomic<bool> learning{false};
std::atomic<const void *> madeAt{nullptr};  ///< return address of the call that makes packets
std::atomic<const void *> freedAt{nullptr}; ///< of the call that frees them
std::atomic<void *> watched{nullptr};       ///< the packet whose end is to be learnt

struct Allocation
{
    void *block;
    const void *place;
};
std::array<Allocation, 16> seen; ///< the latest of a packet's size while learning

} // namespace

#ifndef __SANITIZE_THREAD__

namespace {

std::size_t seenCount = 0;

void noteDelete(void *block, const void *place)
{
    if (block && block == watched) {
        freedAt = place;
        watched = nullptr;
    } else if (block && place == freedAt) {
        ++packetcount::freed;
    }
}

} // namespace

void *operator new(std::size_t size)
{
    void *block = std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    const void *place = __builtin_return_address(0);
    if (place == madeAt)
        ++packetcount::made;
    else if (learning && size == sizeof(_DataPacket))
        seen[seenCount++ % seen.size()] = {block, place};
    return block;
}

void operator delete(void *block) noexcept
{
    noteDelete(block, __builtin_return_address(0));
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept
{
    noteDelete(block, __builtin_return_address(0));
    std::free(block);
}

#endif

void packetcount::learn(qorvexgraph *window)
{
    const unsigned char report[] = {8, 33, 1, 2, 3, 4, 5, 6};
    QObject::disconnect(window, SIGNAL(DataReceived()), nullptr, nullptr);
    learning = true;
    qorvexgraph::DataCallback(1, report, sizeof report, window);
    learning = false;
    _DataPacket *packet = Inspect::lastQueued(*window);
    for (const Allocation &allocation : seen) {
        if (allocation.block == packet)
            madeAt = allocation.place;
    }
    watched = packet;
    window->OnDataReceived();
    if (isCounting && (!madeAt || !freedAt))
        qFatal("the places that make and free packets are not found");
}
