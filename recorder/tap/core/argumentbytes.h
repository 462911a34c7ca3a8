#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "payloads.h"
#include "producer.h"
#include "readable.h"

namespace tap {

/// The payload of a call or a return, which lies in several places: numbers here, texts where the host has
/// them.
class ArgumentBytes
{
public:
    /// \param isRecorded false reads nothing that a pointer leads to
    explicit ArgumentBytes(bool isRecorded)
        : mayFollow(isRecorded)
    {
    }

    /// An integer, widened to four bytes as its type has a sign.
    template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
    void add(Integer value)
    {
        const auto wide = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
        addNumber(wide);
    }

    /// A text; empty where it can't be read.
    void add(const char *text)
    {
        const std::optional<std::size_t> length = text && mayFollow ? lengthOf(text) : std::nullopt;
        isUnread = isUnread || (text && !length);
        addText(text, length.value_or(0));
    }

    /// A buffer with its length; empty where it can't be read.
    void add(const void *bytes, std::size_t length)
    {
        addText(bytes, length == 0 || mayRead(bytes, length) ? length : 0);
    }

    /// Bytes that may be read, without a length in front of them.
    void addBytes(const void *bytes, std::size_t length)
    {
        const std::size_t room = isCut() ? 0 : capture::maxReportLength - kept;
        original += length;
        length = std::min(length, room);
        const bool isNext = count > 0 && endOf(pieces[count - 1]) == bytes;
        if (length == 0 || (!isNext && count == maxPieces))
            return;
        if (isNext)
            pieces[count - 1].length += length;
        else
            pieces[count++] = {bytes, length};
        kept += length;
    }

    /// Whether bytes of the host's may be read, up to what a payload keeps. Remembers those that may not.
    bool mayRead(const void *bytes, std::size_t length)
    {
        if (!bytes || !mayFollow)
            return false;
        const bool isIt = isReadable(bytes, std::min(length, capture::maxReportLength));
        isUnread = isUnread || !isIt;
        return isIt;
    }

    const ring::Piece *data() const { return pieces; }
    std::size_t size() const { return count; }
    std::uint32_t originalLength() const { return static_cast<std::uint32_t>(original); }
    bool isCut() const { return kept < original; }
    bool hasUnread() const { return isUnread; }

private:
    static constexpr std::size_t maxPieces = 8;

    static const void *endOf(const ring::Piece &piece)
    {
        return static_cast<const unsigned char *>(piece.data) + piece.length;
    }

    void addText(const void *bytes, std::size_t length)
    {
        addNumber(bytes ? static_cast<std::uint32_t>(length) : capture::nullText);
        if (bytes)
            addBytes(bytes, length);
    }

    void addNumber(std::uint32_t value)
    {
        unsigned char *at = numbers + 4 * numberCount++;
        for (unsigned i = 0; i < 4; ++i)
            at[i] = static_cast<unsigned char>(value >> (8 * i));
        addBytes(at, 4);
    }

    unsigned char numbers[64];
    std::size_t numberCount = 0;
    ring::Piece pieces[maxPieces];
    std::size_t count = 0;
    std::size_t kept = 0;
    std::size_t original = 0;
    bool isUnread = false;
    bool mayFollow;
};

} // namespace tap
