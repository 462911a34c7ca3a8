#include <QLabel>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTreeView>

#include "fuzz/fuzzing.h"
#include "monitor.h"
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

qorvexgraph *window = nullptr;

void checkView(const monitor *view, const _DataPacket *last)
{
    fuzz::require(view->model->rowCount() <= 151, "no more than 151 rows");
    fuzz::require(view->pendingText.isEmpty() || view->pendingTextTimer.isActive(),
                  "an unfinished line will be shown");
    if (!last || last->data.size() <= 2)
        return;
    const auto type = static_cast<unsigned char>(last->data.at(1));
    if (type == 50 && last->data.endsWith('\n') && last->checksum == view->previousPacket->checksum)
        fuzz::require(view->pendingText.isEmpty(), "a line feed ends a line");
    if (view->model->rowCount() > 0) {
        const QString row = view->model->item(view->model->rowCount() - 1)->text();
        fuzz::require(row.startsWith(view->lastRowLabel->text()), "the label repeats the newest row");
    }
}

void runStep(fuzz::Input &input, QTime &time, QByteArray &bytes)
{
    monitor *view = window->monitorView;
    const int operation = input.byte();
    if (operation == 248) {
        view->OnTimerAddRest();
        fuzz::require(view->pendingText.isNull(), "the timer leaves no text");
    } else if (operation == 249 || operation == 250) {
        window->tabs->setCurrentIndex(operation - 249);
    } else if (operation == 251) {
        view->grab();
    } else if (operation == 252) {
        view->OnChangedFontSize(QString::number(input.byte() % 20));
    } else {
        if (operation == 254)
            time = QTime(23, 59, 59, 990);
        if (operation == 255)
            bytes.clear();
        else if (operation != 253)
            bytes = input.bytes(input.byte());
        time = time.addMSecs(operation < 248 ? operation : 0);
        _DataPacket packet = packetOf(bytes, time);
        view->Display(&packet);
        checkView(view, &packet);
    }
    checkView(view, nullptr);
}

/// As after its construction; a new window for each input would take most of the time.
void resetView()
{
    monitor *view = window->monitorView;
    view->model->removeRows(0, view->model->rowCount());
    view->lastRowLabel->clear();
    view->pendingTextTimer.stop();
    view->pendingText = QString();
    delete view->previousPacket;
    view->previousPacket = nullptr;
    view->OnChangedFontSize(QStringLiteral("10"));
    window->tabs->setCurrentIndex(1);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::startApplication();
    window = new qorvexgraph;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::Input input(data, size);
    QTime time(12, 0);
    QByteArray bytes;
    resetView();
    while (!input.isEmpty())
        runStep(input, time, bytes);
    return 0;
}
