#include "driver/fake/boards.h"

#include <array>
#include <atomic>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "driver/fake/calllog.h"
#include "driver/fake/fakeboards.h"

namespace boards {

namespace {

using DataRegistration = std::pair<OrvexDataCallback, void *>;
using PnpRegistration = std::pair<OrvexPnpCallback, void *>;

struct SeenRecord
{
    const void *address;
    std::array<unsigned char, sizeof(_ORVEX_DEVICE_INFO)> bytes;
};

struct State
{
    const SeenRecord &record(int index) const { return records.at(static_cast<std::size_t>(index)); }

    std::vector<int> ids;
    int failingIndex = -1;
    std::map<std::string, int> results;
    std::map<int, std::set<DataRegistration>> dataCallbacks; ///< by board
    std::set<PnpRegistration> pnpCallbacks;
    std::map<int, DataRegistration> channels; ///< by board
    std::deque<SeenRecord> records;
};

std::mutex mutex;
State state;

std::vector<std::thread> floodThreads;
std::atomic<bool> flooding{false};
std::atomic<long> floodCount{0};

template <typename Function>
auto locked(Function function)
{
    const std::lock_guard lock(mutex);
    return function();
}

/// Calls go out without the lock: a callback may come back in. \return number of calls
long deliverHere(int device, const unsigned char *data, unsigned int length)
{
    const auto callbacks = locked([=] { return state.dataCallbacks[device]; });
    for (const auto &[callback, context] : callbacks)
        callback(device, data, length, context);
    return static_cast<long>(callbacks.size());
}

void deliver(int device, const unsigned char *data, unsigned int length, int threads)
{
    if (threads == 0)
        deliverHere(device, data, length);
    std::vector<std::thread> all;
    for (int i = 0; i < threads; ++i)
        all.emplace_back(deliverHere, device, data, length);
    for (std::thread &thread : all)
        thread.join();
}

void plug()
{
    const auto callbacks = locked([] { return state.pnpCallbacks; });
    std::thread([&callbacks] {
        for (const auto &[callback, context] : callbacks)
            callback(context);
    }).join();
}

void flood(unsigned char thread)
{
    constexpr std::array<unsigned char, 9> types{50, 104, 47, 33, 162, 119, 163, 164, 50};
    std::array<unsigned char, 64> report{};
    report[0] = report.size();
    report[2] = thread;
    for (std::uint32_t turn = 0; flooding; ++turn) {
        report[1] = types[turn % types.size()];
        std::memcpy(&report[4], &turn, sizeof turn);
        for (const auto &board : locked([] { return state.dataCallbacks; }))
            floodCount += deliverHere(board.first, report.data(), report.size());
        std::this_thread::sleep_for(std::chrono::milliseconds(4));
    }
}

void startFlood(int threads)
{
    flooding = true;
    floodCount = 0;
    for (int i = 0; i < threads; ++i)
        floodThreads.emplace_back(flood, static_cast<unsigned char>(i));
}

long stopFlood()
{
    flooding = false;
    for (std::thread &thread : floodThreads)
        thread.join();
    floodThreads.clear();
    return floodCount;
}

void reset()
{
    locked([] { state = State{}; });
    calllog::setObserver(nullptr);
    calllog::clear();
}

} // namespace

int result(const std::string &entryPoint, int byDefault)
{
    return locked([&] {
        const auto set = state.results.find(entryPoint);
        return set == state.results.end() ? byDefault : set->second;
    });
}

int count()
{
    return locked([] { return static_cast<int>(state.ids.size()); });
}

bool enumerate(int index, unsigned char *record)
{
    constexpr int idOffset = 20;
    constexpr unsigned char restOfRecord = 0xA5;
    const std::lock_guard lock(mutex);
    SeenRecord seen{record, {}};
    std::memcpy(seen.bytes.data(), record, sizeof(_ORVEX_DEVICE_INFO));
    state.records.push_back(seen);
    if (index < 0 || static_cast<std::size_t>(index) >= state.ids.size() || index == state.failingIndex)
        return false;
    std::memset(record + 4, restOfRecord, sizeof(_ORVEX_DEVICE_INFO) - 4);
    const std::int32_t id = state.ids[static_cast<std::size_t>(index)];
    std::memcpy(record + idOffset, &id, sizeof id);
    return true;
}

void addDataCallback(int device, OrvexDataCallback callback, void *context)
{
    locked([=] { state.dataCallbacks[device].insert({callback, context}); });
}

void setChannel(int device, OrvexDataCallback callback, void *context)
{
    locked([=] { state.channels[device] = {callback, context}; });
}

void callChannel(int device, const unsigned char *data, unsigned int length)
{
    const auto [callback, context] = locked([=] { return state.channels[device]; });
    if (callback)
        callback(device, data, length, context);
}

void addPnpCallback(OrvexPnpCallback callback, void *context)
{
    locked([=] { state.pnpCallbacks.insert({callback, context}); });
}

} // namespace boards

extern "C" [[gnu::visibility("default")]] const FakeBoards *fake_boards()
{
    using namespace boards;
    static constexpr FakeBoards table{
        reset,
        [](const int *ids, int number) { locked([=] { state.ids.assign(ids, ids + number); }); },
        [](int index) { locked([=] { state.failingIndex = index; }); },
        [](const char *entryPoint, int value) { locked([=] { state.results[entryPoint] = value; }); },
        calllog::count,
        calllog::at,
        calllog::clear,
        [](int index) { return locked([=] { return state.record(index).bytes.data(); }); },
        [](int index) { return locked([=] { return state.record(index).address; }); },
        [](int device) {
            return locked([=] { return static_cast<int>(state.dataCallbacks[device].size()); });
        },
        [] { return locked([] { return static_cast<int>(state.pnpCallbacks.size()); }); },
        boards::deliver,
        plug,
        startFlood,
        stopFlood,
        calllog::setObserver,
    };
    return &table;
}
