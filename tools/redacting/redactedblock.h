#pragma once

#include <string>

#include "bytes.h"

namespace redacting {

/// A packet's block with other data of the same length. Its comments, flags and drop count are kept; a hash
/// of the old data and options of other tools are not. \pre the block has been read without damage
std::string packetBlock(capture::ByteView block, capture::ByteOrder order, const std::string &data);

} // namespace redacting
