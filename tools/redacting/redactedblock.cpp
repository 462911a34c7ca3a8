#include "redactedblock.h"

#include "pcapng.h"

namespace redacting {

namespace {

using capture::ByteOrder;
using capture::ByteView;
namespace pcapng = capture::pcapng;

constexpr std::size_t lengthIndex = 4;
constexpr std::size_t dataIndex = 28; ///< behind type, length, interface, time and lengths of the data

std::string length(std::size_t size, ByteOrder order)
{
    std::string bytes;
    capture::append(bytes, static_cast<std::uint32_t>(size));
    return order == ByteOrder::Little ? bytes : std::string(bytes.rbegin(), bytes.rend());
}

bool isKept(std::uint16_t option)
{
    return option == pcapng::Comment || option == pcapng::PacketFlags || option == pcapng::DropCount;
}

std::string keptOptions(ByteView options, ByteOrder order)
{
    constexpr std::size_t optionHeader = 4;
    std::string all;
    while (options.size >= optionHeader) {
        const auto option = capture::integerAt<std::uint16_t>(options, 0, order);
        const std::size_t size =
            optionHeader + capture::padded(capture::integerAt<std::uint16_t>(options, 2, order));
        if (option == pcapng::EndOfOptions)
            break;
        if (isKept(option))
            all += options.first(size).text();
        options = options.from(size);
    }
    return all.empty() ? all : all + std::string(optionHeader, '\0');
}

} // namespace

std::string packetBlock(ByteView block, ByteOrder order, const std::string &data)
{
    const std::size_t size = capture::padded(data.size());
    const ByteView options = block.first(block.size - 4).from(dataIndex + size);
    std::string bytes(block.first(dataIndex).text());
    bytes += data;
    bytes.resize(dataIndex + size);
    bytes += keptOptions(options, order);
    const std::string total = length(bytes.size() + 4, order);
    return bytes.replace(lengthIndex, total.size(), total) + total;
}

} // namespace redacting
