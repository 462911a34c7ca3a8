#include <QTabWidget>

#include "fuzz/fuzzing.h"
#include "fuzz/inspect.h"
#include "qorvexgraph.h"

// A stream of packets into the Monitor tab. Each step is an operation, then what it needs:
//   0 to 247  a packet that comes so many milliseconds after the last: length, bytes
//   248       the timer of an unfinished line
//   249, 250  the other tab, this tab
//   251       the rows are painted
//   252       a font size: an index
//   253       a packet as it was, again
//   254       midnight passes
//   255       a packet without bytes

namespace {

void checkView(const monitor &view, const _DataPacket &last)
{
    const QStandardItemModel &rows = Inspect::rows(view);
    const QString pendingText = Inspect::pendingText(view);
    fuzz::require(rows.rowCount() <= 151, "no more than 151 rows");
    fuzz::require(pendingText.isEmpty() || Inspect::willShowPendingText(view),
                  "an unfinished line will be shown");
    if (last.data.size() <= 2)
        return;
    const auto type = static_cast<unsigned char>(last.data.at(1));
    if (type == 50 && last.data.endsWith('\n') && last.checksum == Inspect::previousChecksum(view))
        fuzz::require(pendingText.isEmpty(), "a line feed ends a line");
    if (rows.rowCount() > 0) {
        const QString row = rows.item(rows.rowCount() - 1)->text();
        fuzz::require(row.startsWith(Inspect::label(view)), "the label repeats the newest row");
    }
}

void runStep(qorvexgraph &window, fuzz::Input &input, _DataPacket &packet)
{
    auto &view = *window.findChild<monitor *>();
    const int operation = input.byte();
    if (operation == 248) {
        view.OnTimerAddRest();
        fuzz::require(Inspect::pendingText(view).isNull(), "the timer leaves no text");
    } else if (operation == 249 || operation == 250) {
        window.findChild<QTabWidget *>()->setCurrentIndex(operation - 249);
    } else if (operation == 251) {
        view.grab();
    } else if (operation == 252) {
        view.OnChangedFontSize(QString::number(input.byte() % 20));
    } else {
        const QTime time = operation == 254 ? QTime(23, 59, 59, 990) : packet.time;
        QByteArray bytes = packet.data;
        if (operation == 255)
            bytes.clear();
        else if (operation != 253)
            bytes = input.bytes(input.byte());
        packet = packetOf(bytes, time.addMSecs(operation < 248 ? operation : 0));
        view.Display(&packet);
        checkView(view, packet);
    }
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    static auto &window = *new qorvexgraph;
    auto &view = *window.findChild<monitor *>();
    Inspect::reset(view);
    view.OnChangedFontSize("10");
    window.findChild<QTabWidget *>()->setCurrentIndex(1);
    Input input{bytes};
    _DataPacket packet = packetOf(QByteArray());
    while (!input.isEmpty())
        runStep(window, input, packet);
}
