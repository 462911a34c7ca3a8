#include "daylog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

namespace {

QString pathOf(const QDateTime &now)
{
    const QString folder = QDir::homePath() + QDir::separator() + QLatin1String("qorvexgraph logs");
    if (!QDir(folder).exists())
        QDir().mkpath(folder);
    return folder + QDir::separator() + now.toString(QLatin1String("ddd-MMM-d-yy.log"));
}

void writeLine(QFile &file, const QString &text)
{
    file.write((text + QLatin1Char('\n')).toLatin1());
}

} // namespace

void appendToDayLog(const QString &first, const QString &second)
{
    // Opened for each row, so that a row after midnight goes to the next day's file.
    QFile file(pathOf(QDateTime::currentDateTime()));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text))
        return;
    writeLine(file, first);
    if (!second.isEmpty())
        writeLine(file, second);
}
