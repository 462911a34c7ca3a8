#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

#include "packet.h"
#include "recordreader.h"

namespace comparing {

/// What is compared with one another: the packets of one kind and one board, or of none.
struct StreamKey
{
    std::optional<std::int32_t> board; ///< its number in A
    bool isOnlyInB = false;            ///< a board of B's whose number another one has in A
    capture::Kind kind = capture::Kind::Report;

    bool operator<(const StreamKey &other) const
    {
        return std::tie(board, isOnlyInB, kind) < std::tie(other.board, other.isOnlyInB, other.kind);
    }
};

struct Selection
{
    std::set<capture::Kind> kinds{capture::Kind::Report};
    std::map<std::int32_t, std::int32_t> boardsInB; ///< by their numbers in A; others have the same in both
    FieldRules rules;
};

/// Reads the compared packets of one capture, from the beginning as often as is asked for.
class Capture
{
public:
    enum class Side
    {
        A,
        B,
    };

    struct StreamSize
    {
        std::uint64_t packets = 0;
        std::uint64_t bytes = 0; ///< of their payloads
    };

    /// \param seekableFile a descriptor that stays the caller's; the capture begins where it stands
    Capture(int seekableFile, Side which, const Selection &compared);

    /// Reads to the end and counts. To be called once, first.
    /// \param onProgress called now and then with the offset in the file
    /// \return what the reader ended with
    capture::pcapng::Event scan(const std::function<void(std::uint64_t)> &onProgress);
    /// Of the last run through the file.
    const capture::RecordReader &reader() const { return *records; }
    const std::map<StreamKey, StreamSize> &streams() const { return sizes; }
    std::uint64_t packets() const { return packetCount; } ///< compared or not
    /// Time of the first compared packet, since the file's first packet.
    std::int64_t firstComparedNs() const { return firstCompared.value_or(0); }

    /// Goes back to the beginning, and from there on keeps packets of these streams until they are asked for.
    void rewind(const std::set<StreamKey> &streams);
    /// \return nothing behind the last
    std::optional<Packet> next(const StreamKey &stream);
    /// Whether reading again went as reading the first time, up to the last packet that was asked for.
    bool isIntact() const { return intact; }

private:
    std::optional<StreamKey> keyOf(const capture::Header &header) const;
    std::int64_t timeOf(const capture::Record &record) const;

    const int file;
    const std::int64_t start; ///< where the capture begins
    const Side side;
    const Selection &selection;
    std::map<std::int32_t, std::int32_t> boardsInA; ///< by their numbers in B
    std::optional<capture::RecordReader> records;
    std::map<StreamKey, StreamSize> sizes;
    std::optional<std::uint64_t> firstTimeNs;
    std::optional<std::int64_t> firstCompared;
    std::uint64_t packetCount = 0;
    std::uint64_t packetsLeft = 0; ///< until the last of the first reading
    bool intact = true;
    std::map<StreamKey, std::deque<Packet>> waiting;
};

} // namespace comparing
