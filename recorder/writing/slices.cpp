#include "slices.h"

#include <filesystem>
#include <optional>

#include "pcapng.h"

namespace recorder {

Slices::Slices(const std::string &path, const Trigger &chosen, bool isNoted, const ring::Control &control)
    : firstPath(path)
    , trigger(chosen)
    , hasNote(isNoted)
    , losses(control)
    , troublePath(path)
{
    CaptureFile attempt(path);
    trouble = attempt.error();
    if (attempt.isOpen())
        attempt.remove();
}

Slices::~Slices() = default;

std::size_t Slices::write(const std::string &blocks, const std::vector<std::size_t> &sizes)
{
    std::size_t offset = 0;
    for (const std::size_t size : sizes) {
        take(blocks.substr(offset, size));
        offset += size;
    }
    if (file)
        file->flush();
    return sizes.size();
}

/// Statistics are those of each file.
void Slices::take(const std::string &block)
{
    const std::uint32_t type = typeOf(capture::viewOf(block));
    if (type == capture::pcapng::SectionHeader)
        preamble = block;
    if (type == capture::pcapng::InterfaceDescription) {
        interfaces.push_back(block);
        if (file)
            file->add(block);
    }
    if (const std::optional<PacketBlock> packet = packetOf(capture::viewOf(block)))
        takePacket(block, *packet);
}

void Slices::takePacket(const std::string &block, const PacketBlock &packet)
{
    passTime(packet.stampNs - 1);
    for (const BoardLoss &loss : losses.before(packet.header)) {
        told.lose(loss);
        keptLosses.push_back(loss);
        keptBytes += sizeof(BoardLoss);
    }
    keep(block, packet);
    told.follow(packet, isNote(packet));
    const bool isEvent = !isNote(packet) && trigger.isEvent(packet.header, packet.payload);
    if (isEvent)
        untilNs = packet.stampNs + trigger.afterNs;
    if (file)
        file->add(block);
    else if (isEvent)
        begin(packet.stampNs);
}

void Slices::keep(const std::string &block, const PacketBlock &packet)
{
    kept.push_back({block, packet.stampNs, packet.header.sequence - packet.header.lost});
    keptBytes += block.size() + sizeof(Kept);
    while (kept.front().stampNs + trigger.beforeNs < packet.stampNs ||
           (keptBytes > trigger.maxKeptBytes && kept.size() > 1))
        forgetFirst();
}

void Slices::forgetFirst()
{
    const std::string &block = kept.front().block;
    if (const std::optional<PacketBlock> packet = packetOf(capture::viewOf(block))) {
        forgetLosses(packet->header.sequence);
        forgotten.follow(*packet, isNote(*packet));
    }
    keptBytes -= block.size() + sizeof(Kept);
    kept.pop_front();
}

/// Those right before a packet.
void Slices::forgetLosses(std::uint64_t sequence)
{
    for (; !keptLosses.empty() && keptLosses.front().sequence <= sequence; keptLosses.pop_front()) {
        forgotten.lose(keptLosses.front());
        keptBytes -= sizeof(BoardLoss);
    }
}

/// The first packet is a status.
bool Slices::isNote(const PacketBlock &packet) const
{
    return hasNote && packet.header.sequence == 1;
}

/// The event is the last that is kept.
void Slices::begin(std::uint64_t eventNs)
{
    std::uint64_t beginNs = eventNs - trigger.beforeNs;
    if (!forgotten.isEmpty() && forgotten.lastStampNs() >= beginNs) {
        beginNs = kept.front().stampNs;
        ++shortCount;
    }
    lastPath = nextPath();
    file = std::make_unique<SliceFile>(lastPath, kept.front().sequence);
    ++fileCount;
    file->add(preamble);
    for (const std::string &block : interfaces)
        file->add(block);
    for (const std::string &block : forgotten.beginning(beginNs, kept.front().sequence))
        file->add(block);
    for (const Kept &packet : kept)
        file->add(packet.block);
}

std::string Slices::nextPath()
{
    const std::filesystem::path first = firstPath;
    std::filesystem::path next = first;
    std::error_code error;
    // The first was free when the recording began.
    do {
        if (++nameCount > 1)
            next.replace_filename(first.stem().string() + '-' + std::to_string(nameCount) +
                                  first.extension().string());
    } while (std::filesystem::exists(std::filesystem::symlink_status(next, error)));
    return next;
}

void Slices::passTime(std::uint64_t stampNs)
{
    if (!file || stampNs < untilNs)
        return;
    file->add(told.end(untilNs));
    finish();
}

void Slices::close()
{
    if (file)
        finish();
}

void Slices::finish()
{
    file->finish();
    if (!file->error().empty()) {
        trouble = file->error();
        troublePath = file->path();
    }
    file.reset();
}

std::vector<std::string> Slices::remarks() const
{
    if (fileCount == 0)
        return {"nothing happened that --on names: no file was written"};
    std::vector<std::string> lines;
    if (fileCount > 1)
        lines.push_back(std::to_string(fileCount) + " files were written, the last one is " + lastPath);
    if (shortCount > 0)
        lines.push_back("files that begin too late, since memory held no more: " +
                        std::to_string(shortCount));
    return lines;
}

} // namespace recorder
