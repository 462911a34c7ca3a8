#include <algorithm>
#include <limits>

#include "pcapngwriter.h"
#include "recording.h"

namespace recorder {

namespace {

constexpr std::size_t maxCollected = 64 * 1024;

} // namespace

/// The board's, which comes before its first packet, if it is known; otherwise the library's.
std::uint32_t Recording::interfaceOf(const capture::Header &header)
{
    const auto board = boards.find(header.board);
    if (!header.has(capture::BoardIsValid) || board == boards.end())
        return 0;
    if (board->second.interface == 0)
        addInterface(board->first, board->second);
    return board->second.interface;
}

void Recording::addInterface(std::int32_t id, Board &board)
{
    const std::string name = "board " + std::to_string(id);
    const std::string place = board.index < 0 ? std::string() : "index " + std::to_string(board.index) + ", ";
    board.interface = static_cast<std::uint32_t>(interfaces.size());
    interfaces.emplace_back();
    Block block;
    block.isInterface = true;
    block.board = id;
    collect(block, capture::pcapng::interfaceDescription(name, name + ", " + place + sessionText));
}

void Recording::addLost(std::uint64_t count)
{
    nextSequence += count;
    pendingLost += count;
    lostCount += count;
}

void Recording::writePacket(capture::Header header, const std::string &payload, std::uint64_t monotonicNs,
                            const Extras &extras)
{
    capture::pcapng::PacketInfo info;
    info.interface = interfaceOf(header); // may find that there is no room, which changes what is lost
    header.session = session;
    header.sequence = nextSequence++;
    header.lost = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(pendingLost, std::numeric_limits<std::uint32_t>::max()));
    std::string data;
    append(data, header);
    data += payload;

    info.timeNs = std::max(stampOf(monotonicNs), lastStamp + 1);
    info.originalLength = static_cast<std::uint32_t>(std::min<std::uint64_t>(
        capture::headerSize + std::uint64_t{extras.originalPayloadLength}, UINT32_MAX));
    info.flags = extras.direction;
    info.dropCount = pendingLost;
    info.comment = extras.comment;
    lastStamp = info.timeNs;
    interfaces[info.interface].received += 1;
    interfaces[info.interface].dropped += pendingLost;
    const Block block{header.kindOf(), false,         header.board,   info.interface,
                      pendingLost,     header.thread, extras.crossing};
    pendingLost = 0;
    collect(block, capture::pcapng::enhancedPacket(info, capture::viewOf(data)));
}

void Recording::collect(const Block &block, const std::string &bytes)
{
    collected += bytes;
    collectedSizes.push_back(bytes.size());
    collectedBlocks.push_back(block);
    if (collected.size() >= maxCollected)
        flush();
}

void Recording::flush()
{
    if (collectedBlocks.empty())
        return;
    const std::size_t written = output.write(collected, collectedSizes);
    for (std::size_t i = collectedBlocks.size(); i > written; --i)
        takeBack(collectedBlocks[i - 1]);
    collected.clear();
    collectedSizes.clear();
    collectedBlocks.clear();
}

/// Of the last block: it is not in the file.
void Recording::takeBack(const Block &block)
{
    if (block.isInterface) {
        boards[block.board].interface = 0;
        interfaces.pop_back();
        return;
    }
    interfaces[block.interface].received -= 1;
    interfaces[block.interface].dropped -= block.lost;
    pendingLost += block.lost + 1;
    ++lostCount;
    if (block.kind == capture::Kind::Report) {
        --boards[block.board].recorded;
        ++boards[block.board].unwritten;
    } else if (block.kind == capture::Kind::Call) {
        takeOpenCall(block.thread, block.crossing);
    } else if (block.kind == capture::Kind::Board) {
        enumeration.forget(block.board);
    }
}

} // namespace recorder
