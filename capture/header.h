#pragma once

#include <cstdint>
#include <string>

#include "bytes.h"

namespace capture {

/// X(type, name): the fields of the header of each packet, in the order of their bytes, little-endian and
/// without padding. docs/capture-format.md tells what they mean.
#define CAPTURE_HEADER_FIELDS(X)                                                                             \
    X(std::uint16_t, magic)                                                                                  \
    X(std::uint8_t, version)                                                                                 \
    X(std::uint8_t, headerLength)                                                                            \
    X(std::uint8_t, kind)                                                                                    \
    X(std::uint8_t, flags)                                                                                   \
    X(std::uint16_t, call)                                                                                   \
    X(std::int32_t, board)                                                                                   \
    X(std::int32_t, result)                                                                                  \
    X(std::uint64_t, sequence)                                                                               \
    X(std::uint32_t, session)                                                                                \
    X(std::uint32_t, thread)                                                                                 \
    X(std::uint32_t, link)                                                                                   \
    X(std::uint32_t, lost)

/// X(name, text, number): what a packet tells.
#define CAPTURE_KINDS(X)                                                                                     \
    X(Report, "report", 1)                                                                                   \
    X(Call, "call", 2)                                                                                       \
    X(Return, "return", 3)                                                                                   \
    X(Hotplug, "hotplug", 4)                                                                                 \
    X(Status, "status", 5)                                                                                   \
    X(Mark, "mark", 6)                                                                                       \
    X(Board, "board", 7)                                                                                     \
    X(End, "end", 8)

enum class Kind : std::uint8_t
{
#define ENUMERATOR(name, text, number) name = number,
    CAPTURE_KINDS(ENUMERATOR)
#undef ENUMERATOR
};

/// \return "report" for Kind::Report; null for a number without a kind
const char *nameOf(Kind kind);

/// Bits of Header::flags.
enum Flag : std::uint8_t
{
    BoardIsValid = 1,
    ResultIsValid = 2,
    WithinCall = 4, ///< of the same thread
    PayloadCut = 8,
    PointerWasNull = 16,
    NotRead = 32, ///< a buffer without a length, or of a size that is not known
    FromReplay = 64,
    Edited = 128,
};

inline constexpr std::uint16_t magic = 0x4450; ///< "PD"
inline constexpr std::uint8_t version = 1;
inline constexpr std::uint32_t lostLink = 0xFFFFFFFF; ///< link of a return whose call was lost

struct Header
{
#define MEMBER(type, name) type name = 0;
    CAPTURE_HEADER_FIELDS(MEMBER)
#undef MEMBER

    Kind kindOf() const
    {
        return static_cast<Kind>(kind);
    }
    bool has(Flag flag) const
    {
        return (flags & flag) != 0;
    }
};

/// Bytes of a header that is written.
inline constexpr std::size_t headerSize = 40;

/// A header of this version, which only lacks what differs from zero.
Header newHeader(Kind kind);

void append(std::string &bytes, const Header &header);

/// Fields that are not there read as zero.
Header headerOf(ByteView packet);

/// What hinders a packet's header from being read.
enum class HeaderTrouble
{
    None,
    Foreign,    ///< no packet of a capture
    NewVersion, ///< written by a later version
    BadLength,  ///< of the header, which is cut off, or no multiple of four
};

HeaderTrouble troubleOf(const Header &header, std::size_t packetLength);

} // namespace capture
