#include "captures.h"

#include <unistd.h>

namespace comparing {

namespace {

using capture::pcapng::Event;

constexpr std::uint64_t progressPackets = 65'536;

} // namespace

Capture::Capture(int seekableFile, Side which, const Selection &compared)
    : file(seekableFile)
    , start(lseek(seekableFile, 0, SEEK_CUR))
    , side(which)
    , selection(compared)
    , records(std::in_place, seekableFile)
{
    for (const auto &[inA, inB] : compared.boardsInB)
        boardsInA[inB] = inA;
}

Event Capture::scan(const std::function<void(std::uint64_t)> &onProgress)
{
    Event event = records->next();
    for (; event == Event::Packet; event = records->next()) {
        const capture::Record &record = records->record();
        if (packetCount++ == 0)
            firstTimeNs = record.timeNs;
        if (const std::optional<StreamKey> key = keyOf(record.header)) {
            StreamSize &size = sizes[*key];
            ++size.packets;
            size.bytes += record.payload.size;
            if (!firstCompared)
                firstCompared = timeOf(record);
        }
        if (packetCount % progressPackets == 0)
            onProgress(record.offset);
    }
    return event;
}

std::optional<StreamKey> Capture::keyOf(const capture::Header &header) const
{
    StreamKey key;
    key.kind = header.kindOf();
    if (selection.kinds.count(key.kind) == 0)
        return std::nullopt;
    if (!header.has(capture::BoardIsValid))
        return key;
    key.board = header.board;
    if (side == Side::A)
        return key;
    const auto mapped = boardsInA.find(header.board);
    if (mapped != boardsInA.end())
        key.board = mapped->second;
    else
        key.isOnlyInB = selection.boardsInB.count(header.board) > 0;
    return key;
}

/// Stamps may step back; the difference is right all the same.
std::int64_t Capture::timeOf(const capture::Record &record) const
{
    return static_cast<std::int64_t>(record.timeNs - *firstTimeNs);
}

void Capture::rewind(const std::set<StreamKey> &streams)
{
    intact = lseek(file, start, SEEK_SET) == start;
    records.emplace(file);
    packetsLeft = packetCount;
    waiting.clear();
    for (const StreamKey &stream : streams)
        waiting[stream];
}

std::optional<Packet> Capture::next(const StreamKey &stream)
{
    std::deque<Packet> &queue = waiting.at(stream);
    while (queue.empty() && packetsLeft > 0 && intact) {
        intact = records->next() == Event::Packet;
        if (!intact)
            break;
        --packetsLeft;
        const capture::Record &record = records->record();
        const std::optional<StreamKey> key = keyOf(record.header);
        const auto taker = key ? waiting.find(*key) : waiting.end();
        if (taker != waiting.end())
            taker->second.push_back(
                packetOf(record, timeOf(record), key->board.value_or(0), selection.rules));
    }
    if (queue.empty())
        return std::nullopt;
    Packet packet = std::move(queue.front());
    queue.pop_front();
    return packet;
}

} // namespace comparing
