#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "payloads.h"
#include "producer.h"

namespace tap {

/// The payload of a call or a return, which lies in several places: numbers here, texts where the host has
/// them.
class ArgumentBytes
{
public:
    /// An integer, widened to four bytes as its type has a sign.
    template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
    void add(Integer value)
    {
        const auto wide = static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
        addNumber(wide);
    }

    void add(const char *text) { add(text, text ? std::strlen(text) : 0); }

    /// A buffer with its length.
    void add(const void *bytes, std::size_t length)
    {
        if (!bytes) {
            addNumber(capture::nullText);
            return;
        }
        addNumber(static_cast<std::uint32_t>(length));
        addBytes(bytes, length);
    }

    /// Bytes without a length in front of them.
    void addBytes(const void *bytes, std::size_t length)
    {
        const std::size_t room = capture::maxReportLength - kept;
        original += length;
        length = length < room ? length : room;
        if (length == 0 || count == maxPieces)
            return;
        pieces[count++] = {bytes, length};
        kept += length;
        isAtNumbers = false;
    }

    const ring::Piece *data() const { return pieces; }
    std::size_t size() const { return count; }
    std::uint32_t originalLength() const { return static_cast<std::uint32_t>(original); }
    bool isCut() const { return kept < original; }

private:
    static constexpr std::size_t maxPieces = 8;

    void addNumber(std::uint32_t value)
    {
        unsigned char *at = numbers + 4 * numberCount++;
        for (unsigned i = 0; i < 4; ++i)
            at[i] = static_cast<unsigned char>(value >> (8 * i));
        if (isAtNumbers) {
            pieces[count - 1].length += 4;
            kept += 4;
            original += 4;
        } else {
            addBytes(at, 4);
            isAtNumbers = true;
        }
    }

    unsigned char numbers[64];
    std::size_t numberCount = 0;
    ring::Piece pieces[maxPieces];
    std::size_t count = 0;
    bool isAtNumbers = false; ///< the last piece ends with the last number
    std::size_t kept = 0;
    std::size_t original = 0;
};

} // namespace tap
