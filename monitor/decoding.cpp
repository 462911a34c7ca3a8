#include "decoding.h"

#include "datapacket.h"
#include "monitor.h"

namespace {

/// The previous packet of the first one. Never freed, by design.
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

std::string translated(const char *english)
{
    return monitor::tr(english).toStdString();
}

} // namespace

void monitor::Display(_DataPacket *packet)
{
    if (!previousPacket) {
        previousPacket = newDummyPacket();
        OnChangedFont(monitorFont);
    }
    const reports::Bytes bytes{packet->bytes(), packet->byteCount()};
    const bool known = reports::ruleOf(read(reports::reportType, bytes));
    if (known && packet->checksum == previousPacket->checksum)
        return;
    switch (reports::formOf(bytes)) {
    case reports::Form::Raw:
        AddData(bytes.data, qMin(packet->length, static_cast<unsigned int>(bytes.length)));
        break;
    case reports::Form::Text:
        addText(*packet);
        break;
    case reports::Form::Row:
        addRow(reports::fieldRow(bytes, translated));
        break;
    }
    *previousPacket = *packet;
}

void monitor::addRow(const reports::Row &row)
{
    AddData(QString::fromStdString(row.first), QString::fromStdString(row.second));
}

void monitor::addText(const _DataPacket &packet)
{
    pendingTextTimer.stop();
    const reports::Bytes bytes{packet.bytes(), packet.byteCount()};
    std::string characters;
    for (std::size_t i = reports::textOffset; i < bytes.length; ++i) {
        reports::appendPrintable(characters, bytes.data[i]);
        if (bytes.data[i] != '\n')
            continue;
        pendingText += QString::fromStdString(characters);
        characters.clear();
        completeLine(packet);
    }
    if (!characters.empty())
        pendingText += QString::fromStdString(characters);
    if (!pendingText.isEmpty())
        pendingTextTimer.start(reports::lineFlushDelayMs);
}

void monitor::completeLine(const _DataPacket &packet)
{
    // A line that ends too soon after the previous packet is dropped.
    if (previousPacket->time.msecsTo(packet.time) > reports::lineGapMs) {
        const QString text = pendingText;
        AddData(text, QString());
        *previousPacket = packet;
    }
    pendingText = QString();
}
