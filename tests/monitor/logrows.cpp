// Logs a row at each of some times, to which it sets the clock by the file that the clock's library reads.
//   logrows TIME ROW [TIME ROW]...

#include <QApplication>
#include <QDateTime>
#include <QFile>

#include "monitor.h"
#include "qorvexgraph.h"

namespace {

void setClock(const QString &time)
{
    const qint64 seconds = QDateTime::fromString(time, Qt::ISODate).toSecsSinceEpoch();
    QFile file(qEnvironmentVariable("FAKETIME_TIMESTAMP_FILE"));
    if (!file.open(QIODevice::WriteOnly) || file.write("@" + QByteArray::number(seconds) + "\n") < 0)
        qFatal("the clock cannot be set");
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    qorvexgraph window;
    window.monitorView->LogToFile(true);
    for (int i = 1; i < arguments.size(); i += 2) {
        setClock(arguments.at(i));
        window.monitorView->AddData(arguments.value(i + 1), QString());
    }
    return 0;
}
