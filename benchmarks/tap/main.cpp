// What the tap costs a driver thread: a report of 40 bytes from eight threads at once, with and without it.
//   padscope_tapcost [ROUNDS [RING_KIB]]
// Prints median and 99.9th percentile of either in nanoseconds, and what the tap has lost.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <thread>
#include <vector>

#include "consumer.h"
#include "entrypoints.h"
#include "sharedring.h"

namespace {

constexpr int threadCount = 8;
constexpr int callsEach = 5000;
constexpr auto drainInterval = std::chrono::milliseconds(20); // as the recorder has it

using Clock = std::chrono::steady_clock;
using Times = std::vector<std::int64_t>;

std::atomic<unsigned> delivered{0};

void countReport(int, const unsigned char *, unsigned int, void *)
{
    delivered.fetch_add(1, std::memory_order_relaxed);
}

/// The function that a driver library calls when a tap was asked to register ours.
OrvexDataCallback tappedCallback(const char *library)
{
    setenv("PADSCOPE_DRIVER", library, 1);
    void *tap = dlopen(TAP_FILE, RTLD_NOW);
    void *stub = dlopen(library, RTLD_NOW);
    if (!tap || !stub)
        return nullptr;
    using SetCallback = void (*)(int, OrvexDataCallback, void *);
    reinterpret_cast<SetCallback>(dlsym(tap, "orvexSetCallback"))(1001, countReport, nullptr);
    return reinterpret_cast<OrvexDataCallback (*)()>(dlsym(stub, "registeredCallback"))();
}

void call(OrvexDataCallback callback, int board, const std::atomic<int> &missing, Times &times)
{
    const unsigned char report[40] = {40, 33};
    while (missing > 0) {
    }
    for (int i = 0; i < callsEach; ++i) {
        const auto begin = Clock::now();
        callback(board, report, sizeof report, nullptr);
        times.push_back((Clock::now() - begin).count());
    }
}

/// All threads begin at once.
void measure(OrvexDataCallback callback, Times &all)
{
    std::vector<Times> times(threadCount);
    std::atomic<int> missing{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        times[static_cast<std::size_t>(i)].reserve(callsEach);
        threads.emplace_back([&, i] {
            --missing;
            call(callback, 1001 + i, missing, times[static_cast<std::size_t>(i)]);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (const Times &some : times)
        all.insert(all.end(), some.begin(), some.end());
}

void print(const char *name, Times &times)
{
    std::sort(times.begin(), times.end());
    std::printf("%s %lld %lld\n", name, static_cast<long long>(times[times.size() / 2]),
                static_cast<long long>(times[times.size() - times.size() / 1000]));
}

void drain(ring::Control &control, const std::atomic<bool> &isDone)
{
    ring::Consumer consumer(control);
    ring::Taken taken;
    for (bool isLast = false; !isLast;) {
        isLast = isDone;
        while (consumer.take(taken, false) == ring::Consumer::Step::Record) {
        }
        std::this_thread::sleep_for(drainInterval);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 50;
    const int ringKib = argc > 2 ? std::atoi(argv[2]) : static_cast<int>(recorder::defaultRingSize / 1024);
    const recorder::SharedRing shared(static_cast<std::size_t>(ringKib) * 1024, 1);
    if (rounds < 1 || ringKib < 1 || !shared.error().empty())
        return 2;
    setenv("PADSCOPE_RING", shared.path().c_str(), 1);
    const OrvexDataCallback tapped = tappedCallback(argc > 3 ? STUB_SIMULATOR_FILE : STUB_FILE);
    if (!tapped || tapped == countReport)
        return 2;
    std::atomic<bool> isDone{false};
    std::thread recorder([&] { drain(shared.control(), isDone); });
    Times plainTimes;
    Times tappedTimes;
    for (int i = 0; i < rounds; ++i) {
        measure(countReport, plainTimes);
        measure(tapped, tappedTimes);
    }
    isDone = true;
    recorder.join();
    print("untapped", plainTimes);
    print("tapped", tappedTimes);
    std::uint64_t lost = 0;
    for (const ring::BoardSlot &board : shared.control().boards)
        lost += board.lost;
    std::printf("lost %llu of %u\n", static_cast<unsigned long long>(lost), delivered.load() / 2);
    return 0;
}
