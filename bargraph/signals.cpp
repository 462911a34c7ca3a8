#include "bargraph/bargraph.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include <QLabel>
#include <QSpinBox>
#include <QTime>
#include <QTimer>

#include "mainwindow/tab/datapacket.h"

// This view reads some reports otherwise than the monitor does, on purpose: it tells the short signal reports
// by their length byte alone, takes every type-119 report with an ADC length byte for a voltage, reads text
// of type 50 only, as rows of hexadecimal numbers, and keeps two words that the monitor does not show.

namespace {

constexpr int fullLength = 40;
constexpr int fullSubType = 1;
constexpr int integratorLength = 10;
constexpr int normalisedLength = 16;

constexpr int textLineLength = 74; ///< with the "!" that ends it
constexpr int frequencyIndex = 67; ///< of the frequency's first character in a text line
constexpr int textPauseMs = 20;    ///< for so long after a picture no text line makes another
constexpr int sampleStepMs = 100;

/// The channels in their order: X fine, Y fine, X coarse, Y coarse.
constexpr reports::Field channelFields[] = {
    reports::signal1::xFine0,   reports::signal1::xFine60,   reports::signal1::xFine120,
    reports::signal1::yFine0,   reports::signal1::yFine60,   reports::signal1::yFine120,
    reports::signal1::xCoarse0, reports::signal1::xCoarse60, reports::signal1::xCoarse120,
    reports::signal1::yCoarse0, reports::signal1::yCoarse60, reports::signal1::yCoarse120,
};

/// The short reports fill the first channel and, when they are normalised, the third.
constexpr reports::Field integratorFields[] = {
    reports::signal5::integrator0,
    reports::signal5::integrator60,
    reports::signal5::integrator120,
};
constexpr reports::Field normalisedFields[] = {
    reports::signal5::norm0,
    reports::signal5::norm60,
    reports::signal5::norm120,
};
constexpr int thirdChannel = 6;

/// A voltage report that volts() counts down. Shared by all views and never wound up again.
unsigned char sampleReport[32] = {52, reports::TextOrAdcReport, 0, 255, 241};

/// Packet time of the last picture; shared by all views.
QTime &lastDisplayTime()
{
    static QTime time = QTime::currentTime();
    return time;
}

template <std::size_t Count>
void copyFields(const reports::Field (&fields)[Count], const reports::Bytes &bytes, qint16 *values)
{
    for (const reports::Field &field : fields)
        *values++ = static_cast<qint16>(read(field, bytes));
}

bool isShortLength(std::int64_t length)
{
    return length == integratorLength || length == normalisedLength;
}

/// Scans twelve hexadecimal words; those that are not reached keep their values.
void scanSignals(const char *line, qint16 (&values)[12])
{
    unsigned short words[12];
    std::copy(std::begin(values), std::end(values), words);
    std::sscanf(line, "%hx %hx %hx %hx %hx %hx *%hx %hx %hx %hx %hx %hx\r\n", &words[0], &words[1], &words[2],
                &words[3], &words[4], &words[5], &words[6], &words[7], &words[8], &words[9], &words[10],
                &words[11]);
    std::copy(std::begin(words), std::end(words), values);
}

} // namespace

void bargraph::Display(_DataPacket *packet)
{
    lastDisplayTime();
    const reports::Bytes bytes{reinterpret_cast<const unsigned char *>(packet->data.constData()),
                               static_cast<std::size_t>(packet->data.size())};
    const auto type = read(reports::reportType, bytes);
    const auto length = read(reports::reportLength, bytes);
    if (type == reports::TextReport) {
        takeText(*packet);
    } else if (type == reports::SignalReport && length == fullLength &&
               read(reports::reportSubType, bytes) == fullSubType) {
        takeFullSignal(bytes);
        publish(*packet);
    } else if (type == reports::SignalReport && isShortLength(length)) {
        takeShortSignal(bytes);
        publish(*packet);
    } else if (type == reports::TextOrAdcReport && reports::isAdcLength(length)) {
        takeVoltage(bytes);
        lastDisplayTime() = packet->time;
        update();
    }
}

void bargraph::takeText(const _DataPacket &packet)
{
    bool due = false;
    for (int i = static_cast<int>(reports::textOffset); i < packet.data.size(); ++i) {
        const char character = packet.data.at(i);
        textLine += QLatin1Char(character);
        if (character != '!')
            continue;
        if (textLine.size() == textLineLength) {
            // The packet's last line decides; lines that are not due change the state all the same.
            due = lastDisplayTime().msecsTo(packet.time) > textPauseMs;
            parseTextLine();
        }
        textLine.clear();
    }
    if (due)
        publish(packet);
}

void bargraph::parseTextLine()
{
    const QByteArray line = textLine.toLatin1();
    scanSignals(line.constData(), channelSignals);
    // The "!" at the end makes sure that a character follows.
    const int lineFeed = line.indexOf('\n');
    if (lineFeed >= 0)
        proxChar = line.at(lineFeed + 1);
    auto word = static_cast<unsigned short>(frequencyRaw);
    std::sscanf(line.constData() + frequencyIndex, "%hx", &word);
    takeFrequency(static_cast<qint16>(word));
}

void bargraph::takeFullSignal(const reports::Bytes &bytes)
{
    copyFields(channelFields, bytes, channelSignals);
    proxChar = 'O';
    takeFrequency(static_cast<qint16>(read(reports::signal1::frequencyRaw, bytes)));
    reportWord8 = static_cast<int>(read(reports::signal1::reportWord8, bytes));
    reportWord10 = static_cast<int>(read(reports::signal1::reportWord10, bytes));
}

void bargraph::takeShortSignal(const reports::Bytes &bytes)
{
    copyFields(integratorFields, bytes, channelSignals);
    if (read(reports::reportLength, bytes) == normalisedLength)
        copyFields(normalisedFields, bytes, channelSignals + thirdChannel);
}

void bargraph::takeVoltage(const reports::Bytes &bytes)
{
    voltageRaw = reports::adc::adcRaw(bytes);
    if (voltageRaw < voltageMin || voltageMin < 0)
        voltageMin = voltageRaw;
    if (voltageRaw > voltageMax || voltageMax < 0)
        voltageMax = voltageRaw;
}

void bargraph::takeFrequency(qint16 raw)
{
    frequencyRaw = raw;
    frequency = qint64{raw} * 225 / 4;
}

void bargraph::publish(const _DataPacket &packet)
{
    proxLabel->setText(QString::fromLatin1("Prox: %1").arg(QLatin1Char(proxChar)));
    // Formatted and not shown, on purpose: the frequency reaches the user through the spin box alone.
    const QString unshown = QString::fromLatin1("Freq: %1").arg(static_cast<quint64>(frequency));
    Q_UNUSED(unshown)
    // In this order, so that a value which the spin box clamps sends one step, on purpose, and no other does.
    spinFrequency = static_cast<int>(frequency);
    freqSpin->setValue(static_cast<int>(frequency));
    lastDisplayTime() = packet.time;
    update();
}

void bargraph::volts()
{
    unsigned char &level = sampleReport[reports::adc::adcLow.offset];
    if (level == 0)
        return;
    --level;
    takeSample();
    update();
    QTimer::singleShot(sampleStepMs, this, SLOT(volts()));
}

/// Tells the kind of the sample by its length byte, without the tests that reports undergo.
void bargraph::takeSample()
{
    const reports::Bytes bytes{sampleReport, sizeof sampleReport};
    const auto length = read(reports::reportLength, bytes);
    if (length == fullLength)
        takeFullSignal(bytes);
    else if (isShortLength(length))
        takeShortSignal(bytes);
    else if (reports::isAdcLength(length) && read(reports::reportType, bytes) == reports::TextOrAdcReport)
        takeVoltage(bytes);
}
