#include "header.h"

namespace capture {

namespace {

#define ADD_SIZE(type, name) +sizeof(type)
static_assert(0 CAPTURE_HEADER_FIELDS(ADD_SIZE) == headerSize);
#undef ADD_SIZE

} // namespace

const char *nameOf(Kind kind)
{
    switch (kind) {
#define NAME(name, text, number)                                                                             \
    case Kind::name:                                                                                         \
        return text;
        CAPTURE_KINDS(NAME)
#undef NAME
    }
    return nullptr;
}

Header newHeader(Kind kind)
{
    Header header;
    header.magic = magic;
    header.version = version;
    header.headerLength = headerSize;
    header.kind = static_cast<std::uint8_t>(kind);
    return header;
}

void append(std::string &bytes, const Header &header)
{
#define APPEND(type, name) append(bytes, header.name);
    CAPTURE_HEADER_FIELDS(APPEND)
#undef APPEND
}

Header headerOf(ByteView packet)
{
    Header header;
    std::size_t index = 0;
#define READ(type, name)                                                                                     \
    header.name = integerAt<type>(packet, index);                                                            \
    index += sizeof(type);
    CAPTURE_HEADER_FIELDS(READ)
#undef READ
    return header;
}

HeaderTrouble troubleOf(const Header &header, std::size_t packetLength)
{
    if (packetLength < 4 || header.magic != magic || header.version == 0)
        return HeaderTrouble::Foreign;
    if (header.version > version)
        return HeaderTrouble::NewVersion;
    if (header.headerLength < headerSize || header.headerLength % 4 != 0 ||
        header.headerLength > packetLength)
        return HeaderTrouble::BadLength;
    return HeaderTrouble::None;
}

} // namespace capture
