#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "layout.h"

namespace recorder {

inline constexpr std::size_t minRingSize = 64 * 1024;
inline constexpr std::size_t defaultRingSize = 16 * 1024 * 1024;
inline constexpr std::size_t maxRingSize = std::size_t{1} << 30;

/// The memory that a host's tap maps: no name in any file system, allocated whole, sealed against shrinking.
/// It is gone with the last process that has it.
class SharedRing
{
public:
    /// \param size of the cells, rounded up to a power of two
    SharedRing(std::size_t size, std::uint32_t session);
    ~SharedRing();

    SharedRing(const SharedRing &) = delete;
    SharedRing &operator=(const SharedRing &) = delete;

    /// Empty, or why there is no memory. Nothing else may be called then.
    const std::string &error() const { return trouble; }

    ring::Control &control() const { return *memory; }
    /// Where the tap finds it while this process lives.
    std::string path() const;

private:
    bool make(std::size_t bytes);
    void fail(const char *what);

    int file = -1;
    std::size_t mappedBytes = 0;
    ring::Control *memory = nullptr;
    std::string trouble;
};

} // namespace recorder
