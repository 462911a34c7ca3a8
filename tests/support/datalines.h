#pragma once

#include <QFile>
#include <QStringList>
#include <QVector>

/// The lines of a test's data file, each in its parts:
///
///   name | value | value|
///
/// The bar at the end keeps blanks before it. A line that begins with '#' is a comment. Ends the program when
/// the file is missing or a line has other parts than it must.
inline QVector<QStringList> dataLines(const char *path, int minParts, int maxParts)
{
    QFile file(QString::fromUtf8(path));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", path, qPrintable(file.errorString()));
    QVector<QStringList> lines;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).chopped(1);
        if (line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList parts = line.chopped(1).split(QStringLiteral(" | "));
        if (!line.endsWith(QLatin1Char('|')) || parts.size() < minParts || parts.size() > maxParts)
            qFatal("%s: not a line of data: %s", path, qPrintable(line));
        lines += parts;
    }
    if (lines.isEmpty())
        qFatal("%s: no data", path);
    return lines;
}
