#include "recording.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <sys/utsname.h>

#include "pcapngwriter.h"

namespace recorder {

namespace {

constexpr std::uint32_t inbound = 1;  // from the library
constexpr std::uint32_t outbound = 2; // to it

constexpr std::uint16_t getDeviceCountCall = 9; // numbers of the format
constexpr std::uint16_t enumDeviceInfoCall = 10;

std::string sessionTextOf(std::uint32_t session)
{
    char text[32];
    std::snprintf(text, sizeof text, "session %08x", session);
    return text;
}

std::uint32_t directionOf(capture::Kind kind)
{
    switch (kind) {
    case capture::Kind::Report:
    case capture::Kind::Return:
    case capture::Kind::Hotplug:
        return inbound;
    case capture::Kind::Call:
        return outbound;
    default:
        return 0;
    }
}

std::string sectionOf(const std::string &sessionText)
{
    utsname system{};
    uname(&system);
    const std::string comment = "padscope capture 1, " + sessionText;
    const std::string os = std::string(system.sysname) + ' ' + system.release;
    capture::pcapng::SectionInfo info;
    info.comment = comment;
    info.hardware = system.machine;
    info.operatingSystem = os;
    info.userApplication = "padscope " PADSCOPE_VERSION;
    return capture::pcapng::sectionHeader(info);
}

} // namespace

Recording::Recording(Output &blocks, std::uint32_t sessionNumber, const Clocks &clocks)
    : output(blocks)
    , session(sessionNumber)
    , start(clocks)
    , sessionText(sessionTextOf(sessionNumber))
    , interfaces(1)
    , lastNs(clocks.monotonicNs)
{
    if (output.write(sectionOf(sessionText)))
        output.write(capture::pcapng::interfaceDescription("driver", "driver library, " + sessionText));
}

void Recording::write(const ring::Taken &taken)
{
    addLost(taken.lost);
    lastNs = std::max(lastNs, taken.clockNs);
    const auto kind = static_cast<capture::Kind>(taken.kind);
    if (kind == capture::Kind::Report)
        writeChanges(enumeration.reported(taken.board), taken);
    const std::optional<OpenCall> returned = close(taken);
    capture::Header header = capture::newHeader(kind);
    header.flags = taken.flags;
    header.call = taken.call;
    header.board = taken.board;
    header.result = taken.result;
    header.thread = taken.thread;
    header.link = taken.link;
    if (kind == capture::Kind::Return)
        header.link = returned ? static_cast<std::uint32_t>(returned->sequence) : capture::lostLink;
    Extras extras;
    extras.direction = directionOf(kind);
    extras.originalPayloadLength = taken.originalLength;
    extras.crossing = taken.crossing;
    if (kind == capture::Kind::Call)
        open(taken);
    if (kind == capture::Kind::Report) {
        ++boards[taken.board].recorded;
        ++reportCount;
    }
    writePacket(header, taken.payload, taken.clockNs, extras);
    if (returned)
        follow(taken, *returned);
}

void Recording::open(const ring::Taken &taken)
{
    std::vector<OpenCall> &calls = openCalls[taken.thread];
    // Their returns were lost.
    if ((taken.flags & capture::WithinCall) == 0)
        calls.clear();
    calls.push_back(
        {taken.crossing, nextSequence, capture::integerAt<std::int32_t>(capture::viewOf(taken.payload), 0)});
}

/// Forgets those within it as well. \return nothing for one that is not in the file
std::optional<Recording::OpenCall> Recording::takeOpenCall(std::uint32_t thread, std::uint64_t crossing)
{
    const auto calls = openCalls.find(thread);
    if (calls == openCalls.end())
        return std::nullopt;
    const auto begin = calls->second.begin();
    const auto end = calls->second.end();
    const auto call =
        std::find_if(begin, end, [&](const OpenCall &open) { return open.crossing == crossing; });
    if (call == end)
        return std::nullopt;
    const OpenCall taken = *call;
    calls->second.erase(call, end);
    if (calls->second.empty())
        openCalls.erase(calls);
    return taken;
}

/// \return nothing for what is no return, or one whose call is not in the file
std::optional<Recording::OpenCall> Recording::close(const ring::Taken &taken)
{
    if (static_cast<capture::Kind>(taken.kind) != capture::Kind::Return || taken.isCallLost)
        return std::nullopt;
    // The ring has the low half of the crossing's number.
    const std::uint32_t distance = static_cast<std::uint32_t>(taken.crossing) - taken.link;
    return takeOpenCall(taken.thread, taken.crossing - distance);
}

/// Returns of the enumeration tell which boards there are.
void Recording::follow(const ring::Taken &taken, const OpenCall &call)
{
    if (taken.call == getDeviceCountCall)
        writeChanges(enumeration.countReturned(taken.result), taken);
    else if (taken.call == enumDeviceInfoCall)
        writeChanges(
            enumeration.recordReturned(call.argument, taken.result != 0 ? taken.payload : std::string()),
            taken);
}

/// \param cause what crossed and tells of them
void Recording::writeChanges(const std::vector<Enumeration::Change> &changes, const ring::Taken &cause)
{
    for (const Enumeration::Change &change : changes) {
        Board &board = boards[change.board];
        board.index = change.index < 0 ? board.index : change.index;
        capture::Header header = capture::newHeader(capture::Kind::Board);
        header.flags = capture::BoardIsValid | (cause.flags & capture::FromReplay);
        header.board = change.board;
        const capture::BoardState state =
            change.isGone ? capture::BoardState::Gone : capture::BoardState::Seen;
        writePacket(header,
                    payloadOf(capture::BoardChange{state, change.index, capture::viewOf(change.record)}),
                    cause.clockNs, {});
    }
}

std::vector<capture::BoardCounts> Recording::counts(const ring::Control &control, bool isEnd) const
{
    std::vector<capture::BoardCounts> all;
    std::set<std::int32_t> counted;
    for (const ring::BoardSlot &slot : control.boards) {
        if (slot.key == 0)
            continue;
        capture::BoardCounts counts;
        counts.board = static_cast<std::int32_t>(static_cast<std::uint32_t>(slot.key));
        counts.delivered = slot.delivered;
        const auto board = boards.find(counts.board);
        if (board != boards.end()) {
            counts.recorded = board->second.recorded;
            counts.lost = board->second.unwritten;
        }
        counts.lost += slot.lost;
        if (isEnd) {
            // What a producer that died has not counted any more.
            counts.delivered = std::max(counts.delivered, counts.recorded);
            counts.lost = counts.delivered - counts.recorded;
        }
        all.push_back(counts);
        counted.insert(counts.board);
    }
    // What is lost of a board without a slot stands in the total alone.
    for (const auto &[id, board] : boards) {
        const std::uint64_t delivered = board.recorded + board.unwritten;
        if (delivered > 0 && counted.count(id) == 0)
            all.push_back({id, delivered, board.recorded, board.unwritten});
    }
    return all;
}

void Recording::writeStatus(const Clocks &clocks, const ring::Control &control)
{
    const capture::Status status{clocks.monotonicNs, clocks.realNs, clocks.bootNs, clocks.localOffsetSeconds,
                                 counts(control, false)};
    writePacket(capture::newHeader(capture::Kind::Status), payloadOf(status), clocks.monotonicNs, {});
}

void Recording::passTime(std::uint64_t monotonicNs)
{
    output.passTime(stampOf(monotonicNs));
}

void Recording::writeMark(const marking::Mark &mark)
{
    lastNs = std::max(lastNs, mark.askedNs);
    capture::Header header = capture::newHeader(capture::Kind::Mark);
    header.result = mark.signal;
    header.flags = mark.signal != 0 ? capture::ResultIsValid : 0;
    Extras extras;
    extras.comment = mark.text;
    writePacket(header, mark.text, lastNs, extras);
}

void Recording::writeEnd(capture::End end, std::uint64_t lost, const Clocks &clocks,
                         const ring::Control &control)
{
    flush(); // what is not written is lost
    addLost(lost);
    end.boards = counts(control, true);
    end.lost = lostCount;
    const std::uint64_t lostBefore = lostCount;
    writePacket(capture::newHeader(capture::Kind::End), payloadOf(end), clocks.monotonicNs, {});
    flush();
    if (lostCount != lostBefore)
        return;
    std::string statistics;
    std::vector<std::size_t> sizes;
    for (std::size_t i = 0; i < interfaces.size(); ++i) {
        capture::pcapng::StatisticsInfo info;
        info.interface = static_cast<std::uint32_t>(i);
        info.startNs = start.realNs;
        info.endNs = lastStamp;
        info.received = interfaces[i].received;
        info.dropped = interfaces[i].dropped;
        const std::string block = capture::pcapng::interfaceStatistics(info);
        statistics += block;
        sizes.push_back(block.size());
    }
    output.write(statistics, sizes);
}

} // namespace recorder
