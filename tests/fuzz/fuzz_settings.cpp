#include <cstdio>

#include <QFile>
#include <QLabel>
#include <QSpinBox>

#include "bargraph.h"
#include "fuzz/fuzzing.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"

// An arbitrary settings file at the start of the window, which is then used and closed, and so writes it
// again. Values that may be nested deeper than 100 are skipped: Qt exhausts the stack on a file that somebody
// has made to be nested without end, and the tool can't prevent it.

namespace {

QString settingsPath()
{
    static const QString path = QSettings("Corvane", "qorvexgraph").fileName();
    return path;
}

/// Whether a value may be nested deeper than 100. Each level begins with its type, and so with three zeros,
/// which stand in the file as they are or as escapes.
bool mayBeNestedDeeply(const QByteArray &bytes)
{
    return bytes.count('\0') + bytes.count('\\') > 3 * 100;
}

void writeFile(const QByteArray &bytes)
{
    // As it was set aside.
    QFile::remove(settingsPath() + ".damaged-1");
    QFile file(settingsPath());
    fuzz::require(file.open(QIODevice::WriteOnly | QIODevice::Truncate), "the settings file can be written");
    file.write(bytes);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::startApplication();
    // Makes the folder.
    QSettings("Corvane", "qorvexgraph").setValue("Classic Mode", true);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::Input(data, size).bytes(size);
    if (mayBeNestedDeeply(bytes)) {
        std::fputs("skipped: values may be nested deeper than 100\n", stderr);
        return 0;
    }
    writeFile(bytes);
    {
        qorvexgraph window;
        fuzz::require(window.commandLine->history.size() <= 30, "at most 30 lines are read");
        fuzz::require(window.commandLine->historyIndex == 0, "recalling starts from the front");
        const int shown = window.barGraphView->freqSpin->value();
        fuzz::require(shown >= 0 && shown <= 500000, "the spin box is within its range");
        _DataPacket packet = packetOf(QByteArray("\x08\x32"
                                                 "line\r\n",
                                                 8),
                                      QTime(12, 0));
        window.monitorView->logEnabled = false;
        window.monitorView->Display(&packet);
        window.monitorView->grab();
        window.barGraphView->Display(&packet);
        window.close();
        delete window.monitorView->previousPacket;
    }
    qorvexgraph again;
    fuzz::require(again.commandLine->history.size() <= 30, "at most 30 lines are read back");
    return 0;
}
