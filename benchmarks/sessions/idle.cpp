#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTabWidget>
#include <QVBoxLayout>

#include "inspect.h"
#include "session.h"

namespace {

constexpr int focusSettlingMs = 1500;

/// How often this thread has gone to sleep.
int sleeps()
{
    QFile status(QLatin1String("/proc/thread-self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("no /proc/thread-self/status");
    const QByteArrayList lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("voluntary_ctxt_switches:"))
            return line.mid(line.indexOf(':') + 1).trimmed().toInt();
    }
    qFatal("no count of context switches");
}

QJsonObject sleepsOf(QWidget *window, QWidget *edit, int seconds)
{
    window->show();
    window->activateWindow();
    edit->setFocus();
    runFor(focusSettlingMs);
    const int before = sleeps();
    runFor(1000 * seconds);
    return {{"wakeups", sleeps() - before}, {"focused", edit->hasFocus()}};
}

} // namespace

QJsonObject idle(const QString &shown, int seconds)
{
    if (shown == QLatin1String("bare")) {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *edit = new QLineEdit;
        layout->addWidget(edit);
        return sleepsOf(&window, edit, seconds);
    }
    const Session session;
    const Tool &tool = session.tool;
    QWidget *rows = tool.rows;
    Inspect::tabsOf(tool.window)->setCurrentWidget(shown == QLatin1String("bars") ? tool.bars : rows);
    return sleepsOf(tool.window, Inspect::commandLineOf(tool.window), seconds);
}
