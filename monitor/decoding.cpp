#include "monitor/monitor.h"

#include <charconv>
#include <cstdlib>
#include <iterator>

#include "mainwindow/datapacket.h"
#include "monitor/rowformats.h"

namespace {

constexpr int restOfLineMs = 300;
constexpr int closestLineMs = 30;

reports::Bytes bytesOf(const _DataPacket &packet)
{
    return {reinterpret_cast<const unsigned char *>(packet.data.constData()),
            static_cast<std::size_t>(packet.data.size())};
}

/// Stands in for the packet before the first one. Never freed, by design.
_DataPacket *newDummyPacket()
{
    auto *packet = new _DataPacket;
    packet->data = QByteArray("HH");
    packet->length = 2;
    packet->device = 0;
    packet->time = QTime::currentTime();
    packet->checksum = qChecksum("HH", 2);
    return packet;
}

bool isKnown(std::int64_t type)
{
    switch (type) {
    case reports::SignalReport:
    case reports::TextReport:
    case reports::PhaseReport:
    case reports::TextOrAdcReport:
    case reports::PenIdentityReport:
    case reports::DualPenReport:
    case reports::PositionReport:
        return true;
    default:
        return false;
    }
}

bool isAdc(const reports::Bytes &bytes)
{
    return read(reports::reportType, bytes) == reports::TextOrAdcReport &&
           reports::isAdcLength(read(reports::reportLength, bytes)) &&
           read(reports::reportSubType, bytes) == reports::adcSubType;
}

bool isText(const reports::Bytes &bytes)
{
    const auto type = read(reports::reportType, bytes);
    return type == reports::TextReport || (type == reports::TextOrAdcReport && !isAdc(bytes));
}

/// Whether the length byte fits the type; only two types have a rule.
bool hasValidLength(const reports::Bytes &bytes)
{
    const auto length = read(reports::reportLength, bytes);
    switch (read(reports::reportType, bytes)) {
    case reports::SignalReport:
        return reports::isSignalLength(length);
    case reports::PhaseReport:
        return length == reports::phaseReportLength;
    default:
        return true;
    }
}

void appendPadded(QByteArray &text, std::int64_t value, int width)
{
    char digits[24];
    const auto length =
        static_cast<int>(std::to_chars(std::begin(digits), std::end(digits), value).ptr - digits);
    text.append(qMax(0, width - length), ' ').append(digits, length);
}

/// Gives what one QString::arg() for each column would, in a single pass. Placeholders beyond the columns
/// stay.
QString filled(const rows::Text &text, const reports::Bytes &bytes)
{
    QByteArray result;
    for (const char *at = text.format; *at != '\0';) {
        char *end = nullptr;
        const unsigned long number = *at == '%' ? std::strtoul(at + 1, &end, 10) : 0;
        if (number == 0 || number > text.columnCount) {
            result += *at++;
            continue;
        }
        const rows::Column &column = text.columns[number - 1];
        appendPadded(result, read(column.field, bytes), column.width);
        at = end;
    }
    return QString::fromLatin1(result);
}

QString penName(std::int64_t kind)
{
    switch (kind) {
    case 0:
        return monitor::tr("Teacher");
    case 1:
        return monitor::tr("Student");
    default:
        return monitor::tr("Unknown: %1").arg(static_cast<qlonglong>(kind));
    }
}

QString adcText(int raw)
{
    return QString(QLatin1String(rows::adcFormat)).arg(raw).arg(reports::adc::volts(raw), 0, 'g', 4);
}

/// The texts of a row.
struct RowTexts
{
    QString first;
    QString second;
};

RowTexts fieldRowTexts(const reports::Bytes &bytes)
{
    const auto type = read(reports::reportType, bytes);
    const auto subType = read(reports::reportSubType, bytes);
    for (const rows::Row &row : rows::fieldRows) {
        if (row.type == type && (row.subType == rows::anySubType || row.subType == subType))
            return {filled(row.first, bytes), filled(row.second, bytes)};
    }
    // A SignalReport of a sub-type without fields makes an empty row.
    return {};
}

RowTexts rowTexts(const reports::Bytes &bytes)
{
    switch (read(reports::reportType, bytes)) {
    case reports::PenIdentityReport:
        return {filled(rows::penIdentity, bytes).arg(penName(read(reports::penIdentity::penKind, bytes))),
                {}};
    case reports::TextOrAdcReport:
        return {adcText(reports::adc::adcRaw(bytes)), {}};
    case reports::SignalReport:
        if (read(reports::reportSubType, bytes) == rows::signal1SubType)
            return {filled(rows::signal1Fine, bytes) + filled(rows::signal1Coarse, bytes), {}};
        break;
    default:
        break;
    }
    return fieldRowTexts(bytes);
}

} // namespace

void monitor::Display(_DataPacket *packet)
{
    if (!previousPacket) {
        previousPacket = newDummyPacket();
        OnChangedFont(monitorFont);
    }
    const reports::Bytes bytes = bytesOf(*packet);
    const bool known = isKnown(read(reports::reportType, bytes));
    if (known && packet->checksum == previousPacket->checksum)
        return;
    if (!known || !hasValidLength(bytes)) {
        AddData(bytes.data, qMin(packet->length, static_cast<unsigned int>(bytes.length)));
    } else if (isText(bytes)) {
        addText(*packet);
    } else {
        const RowTexts texts = rowTexts(bytes);
        AddData(texts.first, texts.second);
    }
    *previousPacket = *packet;
}

void monitor::addText(const _DataPacket &packet)
{
    pendingTextTimer.stop();
    const reports::Bytes bytes = bytesOf(packet);
    for (std::size_t i = reports::textOffset; i < bytes.length; ++i) {
        const unsigned char byte = bytes.data[i];
        pendingText += QLatin1Char(rows::printable(byte));
        if (byte == '\n')
            completeLine(packet);
    }
    if (!pendingText.isEmpty())
        pendingTextTimer.start(restOfLineMs);
}

void monitor::completeLine(const _DataPacket &packet)
{
    // A line that ends too soon after the packet before it is thrown away unshown.
    if (previousPacket->time.msecsTo(packet.time) > closestLineMs) {
        const QString text = pendingText;
        AddData(text, QString());
        *previousPacket = packet;
    }
    pendingText = QString();
}
