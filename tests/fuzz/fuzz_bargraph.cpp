#include <QSpinBox>

#include "fuzz/fuzzing.h"
#include "fuzz/inspect.h"
#include "support/fakewindow.h"

// A stream of packets into the Bar Graph tab. Each step is an operation, then what it needs:
//   0 to 247  a packet that comes so many milliseconds after the last: length, bytes
//   248       the voltage's extremes are reset
//   249       the picture is painted
//   250       the frequency is stepped: a byte
//   251       classic mode is switched: a byte
//   252       the view gets another size: two bytes
//   253       a text line of twelve words: whole, from 74 bytes
//   254, 255  midnight passes

namespace {

void checkView(const bargraph &view)
{
    const auto [raw, min, max] = Inspect::voltages(view);
    fuzz::require(raw >= -1 && raw <= 1023, "a reading has ten bits");
    fuzz::require((min < 0) == (max < 0), "both extremes, or none");
    fuzz::require(min <= max, "min is not above max");
    const int shown = view.findChild<QSpinBox *>()->value();
    fuzz::require(shown >= 0 && shown <= 500000, "the spin box is within its range");
    fuzz::require(Inspect::frequency(view) == qint64{Inspect::frequencyRaw(view)} * 225 / 4,
                  "the frequency follows its word");
    fuzz::require(!Inspect::textLine(view).contains(QLatin1Char('!')), "a mark ends a line");
}

QByteArray textLine(fuzz::Input &input)
{
    return QByteArray("\x4c\x32", 2) + input.bytes(73).leftJustified(73, '0').replace('!', '0') + '!';
}

void runStep(bargraph &view, fuzz::Input &input, QTime &time)
{
    const int operation = input.byte();
    if (operation == 248) {
        view.resetMinMaxVoltage();
    } else if (operation == 249) {
        view.grab();
    } else if (operation == 250) {
        view.findChild<QSpinBox *>()->setValue(input.byte() * 4000);
    } else if (operation == 251) {
        view.OnClickedClassicMode(input.byte() % 3);
    } else if (operation == 252) {
        const int width = input.byte() * 4;
        view.resize(width, input.byte() * 4);
    } else if (operation >= 254) {
        time = QTime(23, 59, 59, 990);
    } else {
        time = time.addMSecs(operation);
        _DataPacket packet = packetOf(operation == 253 ? textLine(input) : input.bytes(input.byte()), time);
        view.Display(&packet);
    }
    checkView(view);
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    Input input{bytes};
    QTime time(12, 0);
    static auto &window = *new FakeWindow;
    bargraph view(&window);
    while (!input.isEmpty())
        runStep(view, input, time);
}
