#pragma once

#include <cstdint>

#include "bytes.h"

namespace decoding {

/// The checksum by which the Monitor tells a repeated report: CRC-16 of ISO 3309, 0x906E for "123456789".
std::uint16_t checksumOf(capture::ByteView bytes);

} // namespace decoding
