#include <QFile>
#include <QSpinBox>

#include "fuzz/fuzzing.h"
#include "fuzz/inspect.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/otherstore.h"

// An arbitrary settings file at the start of the window, which is then used and closed, and so writes it
// again. Values that may be nested deeper than 100 are skipped: Qt exhausts the stack on a file that somebody
// has made to be nested without end, and the tool can't prevent it.

namespace {

/// Each level of a value begins with its type, and so with three zeros, which stand in the file as they are
/// or as escapes.
constexpr int maxZeros = 3 * 100;

int linesOf(const qorvexgraph &window)
{
    return window.findChild<QLineUpDownEdit *>()->historyLines().size();
}

} // namespace

void fuzz::run(const QByteArray &bytes)
{
    if (bytes.count('\0') + bytes.count('\\') > maxZeros)
        return;
    const QString path = otherStore().fileName();
    fuzz::write(path, bytes);
    QFile::remove(path + ".damaged-1"); // as the last one was quarantined
    {
        qorvexgraph window;
        fuzz::require(linesOf(window) <= 30, "at most 30 lines are read");
        const int shown = window.findChild<QSpinBox *>()->value();
        fuzz::require(shown >= 0 && shown <= 500000, "the spin box is within its range");
        _DataPacket packet = packetOf("\x08\x32line\r\n");
        auto *rows = window.findChild<monitor *>();
        rows->LogToFile(false);
        rows->Display(&packet);
        rows->grab();
        window.findChild<bargraph *>()->Display(&packet);
        window.close();
        Inspect::reset(*rows);
    }
    const qorvexgraph again;
    fuzz::require(linesOf(again) <= 30, "at most 30 lines are read back");
}
