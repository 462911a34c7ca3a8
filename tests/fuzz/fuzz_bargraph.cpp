#include <algorithm>
#include <cstdio>
#include <iterator>

#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>

#include "bargraph.h"
#include "fuzz/fuzzing.h"
#include "qorvexgraph.h"

// A stream of packets into the Bar Graph tab. Each step is an operation, then what it needs:
//   0 to 247  a packet that comes so many milliseconds after the last: length, bytes
//   248       the voltage's extremes are forgotten
//   249       the picture is painted
//   250       the frequency is stepped: a byte
//   251       classic mode is switched: a byte
//   252       the window gets another size: two bytes
//   253       a text line of twelve words: whole, from 74 bytes
//   254, 255  midnight passes

namespace {

qorvexgraph *window = nullptr;

void checkView(const bargraph *view)
{
    fuzz::require(view->voltageRaw >= -1 && view->voltageRaw <= 1023, "a reading has ten bits");
    fuzz::require((view->voltageMin < 0) == (view->voltageMax < 0), "both extremes, or none");
    fuzz::require(view->voltageMin <= view->voltageMax, "min is not above max");
    const int shown = view->freqSpin->value();
    fuzz::require(shown >= 0 && shown <= 500000, "the spin box is within its range");
    fuzz::require(view->frequency == qint64{view->frequencyRaw} * 225 / 4, "the frequency follows its word");
    fuzz::require(!view->textLine.contains(QLatin1Char('!')), "a mark ends a line");
}

QByteArray textLine(fuzz::Input &input)
{
    return QByteArray("\x4c\x32", 2) + input.bytes(73).leftJustified(73, '0').replace('!', '0') + '!';
}

void runStep(fuzz::Input &input, QTime &time)
{
    bargraph *view = window->barGraphView;
    const int operation = input.byte();
    if (operation == 248) {
        view->resetMinMaxVoltage();
    } else if (operation == 249) {
        view->grab();
    } else if (operation == 250) {
        view->freqSpin->setValue(input.byte() * 4000);
    } else if (operation == 251) {
        view->OnClickedClassicMode(input.byte() % 3);
    } else if (operation == 252) {
        const int width = input.byte() * 4;
        view->resize(width, input.byte() * 4);
    } else if (operation >= 254) {
        time = QTime(23, 59, 59, 990);
    } else {
        time = time.addMSecs(operation);
        _DataPacket packet = packetOf(operation == 253 ? textLine(input) : input.bytes(input.byte()), time);
        view->Display(&packet);
    }
    checkView(view);
}

/// As after its construction, but for the time of the last picture, which all windows share; a new window
/// for each input would take most of the time.
void resetView()
{
    bargraph *view = window->barGraphView;
    _DataPacket voltage = packetOf(QByteArray("\x34\x77\x0c\x01\x01", 5), QTime(12, 0));
    view->Display(&voltage);
    std::fill(std::begin(view->channelSignals), std::end(view->channelSignals), qint16{0});
    view->textLine.clear();
    view->proxChar = 0;
    view->frequencyRaw = 0;
    view->frequency = 0;
    view->spinFrequency = 0;
    view->freqSpin->setValue(0);
    view->voltageRaw = -1;
    view->resetMinMaxVoltage();
    view->classicMode = true;
    view->resize(640, 480);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::startApplication();
    // Each step of the spin box writes a line.
    if (!std::freopen("/dev/null", "w", stdout))
        std::abort();
    window = new qorvexgraph;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::Input input(data, size);
    QTime time(12, 0);
    resetView();
    while (!input.isEmpty())
        runStep(input, time);
    return 0;
}
