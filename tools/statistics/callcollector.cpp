#include "callcollector.h"

#include <algorithm>
#include <iterator>

#include "signatures.h"
#include "spread.h"

namespace statistics {

namespace {

/// More than a program makes at once. Those whose return was lost don't pile up.
constexpr std::size_t maxOpenCalls = 1024;

std::string nameOf(unsigned call)
{
    const signatures::Signature *signature = signatures::signatureOf(call);
    return signature ? signature->name : "call " + std::to_string(call);
}

} // namespace

void CallCollector::followCall(const capture::Record &call, bool isWanted)
{
    if (openCalls.size() == maxOpenCalls)
        openCalls.erase(openCalls.begin());
    openCalls.push_back({call.header.thread, static_cast<std::uint32_t>(call.header.sequence), call.timeNs,
                         call.header.call, isWanted});
    if (isWanted)
        ++calls[call.header.call].count;
}

void CallCollector::followReturn(const capture::Record &returned)
{
    const std::uint32_t thread = returned.header.thread;
    const auto isCall = [&](const OpenCall &call) {
        return call.thread == thread && call.number == returned.header.link;
    };
    const auto found = std::find_if(openCalls.rbegin(), openCalls.rend(), isCall);
    if (returned.header.link == capture::lostLink || found == openCalls.rend())
        return;
    if (found->isWanted)
        calls[found->call].durationsNs.push_back(static_cast<std::int64_t>(returned.timeNs - found->timeNs));
    // Calls within this one have returned as well.
    const auto isOver = [thread](const OpenCall &call) { return call.thread == thread; };
    openCalls.erase(std::remove_if(std::prev(found.base()), openCalls.end(), isOver), openCalls.end());
}

std::vector<CallStatistics> CallCollector::take()
{
    std::vector<CallStatistics> list;
    for (auto &[number, call] : calls) {
        list.push_back({nameOf(number), call.count, spreadOf(call.durationsNs)});
        call.durationsNs = {};
    }
    return list;
}

} // namespace statistics
