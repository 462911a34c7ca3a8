#include <algorithm>
#include <iterator>
#include <QLabel>
#include <QSpinBox>
#include <QTime>
#include <QTimer>

#include "bargraph.h"
#include "datapacket.h"
#include "layouts.h"
#include "signalline.h"

// This view decodes some reports differently from the monitor, on purpose: it selects short signal reports by
// their length byte alone, takes every type-119 report with an ADC length byte for a voltage, reads signal
// lines from text of type 50 only, and stores two words that the monitor does not show.

namespace {

constexpr int textPauseMs = 20; ///< a text line requests a repaint only if the last was longer ago
constexpr int sampleStepMs = 100;

/// The channels in their order: X fine, Y fine, X coarse, Y coarse.
constexpr reports::Field channelFields[] = {
    reports::signal1["xFine0"],   reports::signal1["xFine60"],   reports::signal1["xFine120"],
    reports::signal1["yFine0"],   reports::signal1["yFine60"],   reports::signal1["yFine120"],
    reports::signal1["xCoarse0"], reports::signal1["xCoarse60"], reports::signal1["xCoarse120"],
    reports::signal1["yCoarse0"], reports::signal1["yCoarse60"], reports::signal1["yCoarse120"],
};
constexpr reports::Field frequencyField = reports::signal1["frequencyRaw"];
constexpr reports::Field wordFields[] = {reports::signal1["reportWord8"], reports::signal1["reportWord10"]};

/// The short reports fill the first channel and, when they are normalised, the third.
constexpr reports::Field integratorFields[] = {
    reports::signal5["integrator0"],
    reports::signal5["integrator60"],
    reports::signal5["integrator120"],
};
constexpr reports::Field normalisedFields[] = {
    reports::signal5["norm0"],
    reports::signal5["norm60"],
    reports::signal5["norm120"],
};
constexpr int thirdChannel = 6;
constexpr reports::Field voltageField = reports::adc["adcRaw"];

/// The voltage report that volts() counts down. Shared by all views; never reset.
unsigned char sampleReport[32] = {52, reports::TextOrAdcReport, 0, 255, 241};

/// Arrival time of the last packet shown, shared by all views.
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
    return length == reports::signal4.sentLength || length == reports::signal5.sentLength;
}

} // namespace

void bargraph::Display(_DataPacket *packet)
{
    lastDisplayTime();
    const reports::Bytes bytes{packet->bytes(), packet->byteCount()};
    const auto type = read(reports::reportType, bytes);
    const auto length = read(reports::reportLength, bytes);
    if (type == reports::TextReport) {
        takeText(*packet);
    } else if (type == reports::SignalReport && length == reports::signal1.sentLength &&
               read(reports::reportSubType, bytes) == reports::signal1.subType) {
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
        if (character != reports::signalLineEnd)
            continue;
        if (textLine.size() == int{reports::signalLineLength}) {
            // The packet's last line decides. Lines that are not due still change the state.
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
    reports::SignalLine line;
    std::copy(std::begin(channelSignals), std::end(channelSignals), line.components);
    line.proximity = proxChar;
    line.frequencyRaw = frequencyRaw;
    reports::readSignalLine(textLine.toLatin1().toStdString(), line);
    std::copy(std::begin(line.components), std::end(line.components), channelSignals);
    proxChar = line.proximity;
    takeFrequency(line.frequencyRaw);
}

void bargraph::takeFullSignal(const reports::Bytes &bytes)
{
    copyFields(channelFields, bytes, channelSignals);
    proxChar = 'O';
    takeFrequency(static_cast<qint16>(read(frequencyField, bytes)));
    reportWord8 = static_cast<int>(read(wordFields[0], bytes));
    reportWord10 = static_cast<int>(read(wordFields[1], bytes));
}

void bargraph::takeShortSignal(const reports::Bytes &bytes)
{
    copyFields(integratorFields, bytes, channelSignals);
    if (read(reports::reportLength, bytes) == reports::signal5.sentLength)
        copyFields(normalisedFields, bytes, channelSignals + thirdChannel);
}

void bargraph::takeVoltage(const reports::Bytes &bytes)
{
    voltageRaw = static_cast<int>(read(voltageField, bytes));
    if (voltageRaw < voltageMin || voltageMin < 0)
        voltageMin = voltageRaw;
    if (voltageRaw > voltageMax || voltageMax < 0)
        voltageMax = voltageRaw;
}

void bargraph::takeFrequency(qint16 raw)
{
    frequencyRaw = raw;
    frequency = reports::frequencyOf(raw);
}

void bargraph::publish(const _DataPacket &packet)
{
    proxLabel->setText(QString::fromLatin1("Prox: %1").arg(QLatin1Char(proxChar)));
    // Formatted and not shown, on purpose: the frequency reaches the user through the spin box alone.
    const QString unshown = QString::fromLatin1("Freq: %1").arg(static_cast<quint64>(frequency));
    Q_UNUSED(unshown)
    // In this order, so that only a value that the spin box clamps sends a step, on purpose.
    spinFrequency = static_cast<int>(frequency);
    freqSpin->setValue(static_cast<int>(frequency));
    lastDisplayTime() = packet.time;
    update();
}

void bargraph::volts()
{
    unsigned char &level = sampleReport[voltageField.offset];
    if (level == 0)
        return;
    --level;
    takeSample();
    update();
    QTimer::singleShot(sampleStepMs, this, SLOT(volts()));
}

/// Selects the kind by the length byte, without the other checks of Display().
void bargraph::takeSample()
{
    const reports::Bytes bytes{sampleReport, sizeof sampleReport};
    const auto length = read(reports::reportLength, bytes);
    if (length == reports::signal1.sentLength)
        takeFullSignal(bytes);
    else if (isShortLength(length))
        takeShortSignal(bytes);
    else if (reports::isAdcLength(length) && read(reports::reportType, bytes) == reports::TextOrAdcReport)
        takeVoltage(bytes);
}
