#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "losses.h"
#include "output.h"
#include "slicefile.h"
#include "streamstate.h"

namespace recorder {

inline constexpr std::size_t defaultKeptBytes = std::size_t{256} * 1024 * 1024;

/// What is written of a recording: what lies around events.
struct Trigger
{
    std::uint64_t beforeNs = 0;
    std::uint64_t afterNs = 0;
    std::function<bool(const capture::Header &header, capture::ByteView payload)> isEvent;
    std::size_t maxKeptBytes = defaultKeptBytes;
};

/// Keeps a recording's last seconds in memory. Each event gets a file, from before the event to after it; one
/// that comes while a file is written extends it. The first file has the path, further ones a count in it.
class Slices : public Output
{
public:
    /// Finds out whether there can be a file, and leaves none.
    /// \param hasNote the recording's second packet is a note that stands in each file
    Slices(const std::string &path, const Trigger &trigger, bool hasNote, const ring::Control &control);
    ~Slices() override;

    using Output::write;
    std::size_t write(const std::string &blocks, const std::vector<std::size_t> &sizes) override;
    void passTime(std::uint64_t stampNs) override;
    void close() override;
    /// There is none before an event.
    void remove() override {}
    const std::string &error() const override { return trouble; }
    const std::string &path() const override { return troublePath; }
    std::vector<std::string> remarks() const override;

private:
    struct Kept
    {
        std::string block;
        std::uint64_t stampNs;
        std::uint64_t sequence; ///< with what was lost before it
    };

    void take(const std::string &block);
    void takePacket(const std::string &block, const PacketBlock &packet);
    void keep(const std::string &block, const PacketBlock &packet);
    void forgetFirst();
    void forgetLosses(std::uint64_t sequence);
    bool isNote(const PacketBlock &packet) const;
    void begin(std::uint64_t eventNs);
    void finish();
    std::string nextPath();

    const std::string firstPath;
    const Trigger trigger;
    const bool hasNote;
    std::string preamble; ///< the section's block
    std::vector<std::string> interfaces;
    Losses losses;
    std::deque<Kept> kept;
    std::deque<BoardLoss> keptLosses; ///< before these packets
    std::size_t keptBytes = 0;
    StreamState forgotten; ///< before the first that is kept
    StreamState told;      ///< behind the last
    std::unique_ptr<SliceFile> file;
    std::uint64_t untilNs = 0; ///< stamp to which the file goes
    std::uint64_t nameCount = 0;
    std::uint64_t fileCount = 0;
    std::uint64_t shortCount = 0; ///< files that begin too late, for want of memory
    std::string lastPath;
    std::string trouble;
    std::string troublePath;
};

} // namespace recorder
