#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.h"

/// What stands behind the header of a packet. docs/capture-format.md has it for each kind.
namespace capture {

inline constexpr std::size_t maxReportLength = 65'495; ///< what fits a packet behind its header
inline constexpr std::uint32_t nullText = 0xFFFFFFFF;  ///< length of a text whose pointer was null

/// Reports of one board that were delivered to a callback, and what became of them.
struct BoardCounts
{
    std::int32_t board = 0;
    std::uint64_t delivered = 0;
    std::uint64_t recorded = 0;
    std::uint64_t lost = 0;
};

struct Status
{
    std::uint64_t monotonicNs = 0;
    std::uint64_t realNs = 0;            ///< since 1970-01-01 UTC
    std::uint64_t bootNs = 0;            ///< goes on in suspend, unlike the monotonic clock
    std::int32_t localOffsetSeconds = 0; ///< of local time from UTC
    std::vector<BoardCounts> boards;
    std::uint32_t missingBoards = 0; ///< that the packet counts and does not have, since it was cut
};

enum class BoardState : std::uint32_t
{
    Seen = 1,
    Gone = 2,
};

struct BoardChange
{
    BoardState state = BoardState::Seen;
    std::int32_t index = -1; ///< in the library's enumeration; -1 is unknown
    ByteView record;         ///< the library's device record; empty when it is unknown
};

enum class EndReason : std::uint32_t
{
    Exit = 1,
    Signal = 2,
    Unknown = 3,
    Slice = 4, ///< of the file: the recording went on
};

struct End
{
    EndReason reason = EndReason::Unknown;
    /// The exit status, or the signal's number; of an unknown end the status of the host that was started.
    std::int32_t value = 0;
    std::vector<BoardCounts> boards;
    std::uint32_t missingBoards = 0; ///< that the packet counts and does not have, since it was cut
    /// All that was lost, whatever it was: the sum of `lost` of all packets. Nothing where it is not told.
    std::optional<std::uint64_t> lost = std::nullopt;
};

std::string payloadOf(const Status &status);
std::string payloadOf(const BoardChange &change);
std::string payloadOf(const End &end);

/// \return nothing for a payload that is too short
std::optional<Status> statusOf(ByteView payload);
std::optional<BoardChange> boardChangeOf(ByteView payload);
std::optional<End> endOf(ByteView payload);

/// A text or a buffer among the arguments of a call.
void appendText(std::string &payload, std::string_view text);
void appendNullText(std::string &payload);

/// Walks through a payload. What is not there reads as zero or as null.
class PayloadReader
{
public:
    explicit PayloadReader(ByteView payload)
        : rest(payload)
    {
    }

    template <typename Integer>
    Integer number()
    {
        const auto value = integerAt<Integer>(rest, 0);
        skip(sizeof(Integer));
        return value;
    }

    /// \return nothing for a null pointer
    std::optional<ByteView> text();

    bool isWhole() const { return whole; } ///< all that was asked for was there
    ByteView remaining() const { return rest; }

private:
    void skip(std::size_t count);

    ByteView rest;
    bool whole = true;
};

} // namespace capture
