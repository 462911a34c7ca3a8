#include <cctype>

#include <QStandardItemModel>

#include "bargraph.h"
#include "fuzz/fuzzing.h"
#include "monitor.h"
#include "qorvexgraph.h"

// One text cut into packets, whose lengths come first: byte 0 is their number modulo 16. Both views collect
// the lines that the whole text has.

namespace {

qorvexgraph *window = nullptr;

/// What the monitor shows of a text when no line comes too soon: its lines, then the rest.
QStringList expectedRows(const QByteArray &text, QString &rest)
{
    QStringList rows;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        rest += QLatin1Char(std::isprint(byte) ? character : '.');
        if (character != '\n')
            continue;
        rows += rest;
        rest.clear();
    }
    return rows;
}

/// As after its construction; a new window for each input would take most of the time.
void resetViews()
{
    monitor *view = window->monitorView;
    view->model->removeRows(0, view->model->rowCount());
    view->pendingTextTimer.stop();
    view->pendingText = QString();
    delete view->previousPacket;
    view->previousPacket = nullptr;
    window->barGraphView->textLine.clear();
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
    resetViews();
    monitor *view = window->monitorView;
    QTime time(12, 0);
    QByteArray whole;
    int linesTooSoon = 0;
    quint32 lastChecksum = qChecksum("HH", 2);
    std::size_t cuts[16] = {};
    const std::size_t number = input.byte() % 16;
    for (std::size_t i = 0; i < number; ++i)
        cuts[i] = input.byte();
    for (std::size_t i = 0; !input.isEmpty(); i = (i + 1) % 16) {
        const QByteArray part = input.bytes(qMax<std::size_t>(cuts[i], 1));
        _DataPacket packet = packetOf(QByteArray("\x20\x32", 2) + part, time = time.addMSecs(31));
        view->Display(&packet);
        window->barGraphView->Display(&packet);
        if (packet.checksum == lastChecksum)
            continue; // repeated, so not shown
        lastChecksum = packet.checksum;
        whole += part;
        // Only the first line of a packet is far enough from the one before.
        linesTooSoon += qMax(0, part.count('\n') - 1);
    }
    QString rest;
    const QStringList rows = expectedRows(whole, rest);
    // The packet before the first stands at the time of the day, which may be any.
    const int shown = view->model->rowCount();
    fuzz::require(view->pendingText == rest, "the rest of a text waits for its line end");
    if (rows.size() < 100)
        fuzz::require(shown <= rows.size() && shown + linesTooSoon + 1 >= rows.size(), "each line has a row");
    fuzz::require(!window->barGraphView->textLine.contains(QLatin1Char('!')), "a mark ends a line");
    return 0;
}
