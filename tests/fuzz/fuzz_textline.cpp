#include <cctype>

#include "fuzz/fuzzing.h"
#include "fuzz/inspect.h"
#include "support/fakewindow.h"

// One text cut into packets, whose lengths come first: byte 0 is their number modulo 16. Both views collect
// the lines that the whole text has.

namespace {

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

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    Input input{bytes};
    static auto &window = *new FakeWindow;
    static auto &rowsView = *new monitor(&window);
    Inspect::reset(rowsView);
    static auto &barsView = *new bargraph(&window);
    _DataPacket end = packetOf("\x20\x32!");
    barsView.Display(&end);
    QTime time(12, 0);
    QByteArray whole;
    int linesTooSoon = 0;
    quint32 lastChecksum = qChecksum("HH", 2);
    int cuts[16] = {};
    for (int i = 0, number = input.byte() % 16; i < number; ++i)
        cuts[i] = input.byte();
    for (int i = 0; !input.isEmpty(); i = (i + 1) % 16) {
        const QByteArray part = input.bytes(qMax(cuts[i], 1));
        _DataPacket packet = packetOf(QByteArray("\x20\x32", 2) + part, time = time.addMSecs(31));
        rowsView.Display(&packet);
        barsView.Display(&packet);
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
    const int shown = Inspect::rows(rowsView).rowCount();
    fuzz::require(Inspect::pendingText(rowsView) == rest, "the rest of a text waits for its line end");
    if (rows.size() < 100)
        fuzz::require(shown <= rows.size() && shown + linesTooSoon + 1 >= rows.size(), "each line has a row");
    fuzz::require(!Inspect::textLine(barsView).contains(QLatin1Char('!')), "a mark ends a line");
}
