#include "reference/reference.h"

#include <QFile>
#include <QTest>

#include "support/datalines.h"
#include "support/packets.h"

namespace reference {

namespace {

bool isWriting()
{
    return qEnvironmentVariableIsSet("PADSCOPE_WRITE_REFERENCE");
}

QString pathOf(const QString &name)
{
    return QStringLiteral(PADSCOPE_REFERENCE "/") + name;
}

/// Left behind where the test runs, to be looked at.
QString keep(const QString &name, const QImage &picture)
{
    const QString path = QString(name).replace(QLatin1Char('/'), QLatin1Char('-'));
    return picture.save(path) ? QStringLiteral("; see ") + path : QStringLiteral("; it can't be saved");
}

/// Makes fontconfig see the family of the pictures alone, before the application is created.
[[maybe_unused]] const bool fixedFonts = qputenv("FONTCONFIG_FILE", PADSCOPE_REFERENCE "/fonts.conf");

} // namespace

QString difference(const QImage &actual, const QImage &expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("%1x%2 instead of %3x%4 pixels")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    if (actual == expected)
        return {};
    int count = 0;
    QPoint first;
    for (int y = actual.height() - 1; y >= 0; --y) {
        for (int x = actual.width() - 1; x >= 0; --x) {
            if (actual.pixel(x, y) != expected.pixel(x, y)) {
                ++count;
                first = {x, y};
            }
        }
    }
    return QStringLiteral("%1 pixels differ, first (%2, %3)").arg(count).arg(first.x()).arg(first.y());
}

QString difference(const QString &name, const QImage &picture)
{
    const QString path = pathOf(name + QStringLiteral(".png"));
    const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
    if (isWriting())
        return opaque.save(path) ? QString() : QStringLiteral("can't write ") + path;
    const QImage kept(path);
    if (kept.isNull())
        return QStringLiteral("no picture ") + path;
    const QString text = difference(opaque, kept.convertToFormat(QImage::Format_RGB32));
    return text.isEmpty() ? text : text + keep(name + QStringLiteral(".png"), opaque);
}

QString difference(const QString &name, const QByteArray &text)
{
    QFile file(pathOf(name));
    if (isWriting())
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size()
                   ? QString()
                   : QStringLiteral("can't write ") + file.fileName();
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("no text ") + file.fileName();
    const auto actual = text.split('\n');
    const auto expected = file.readAll().split('\n');
    for (int line = 0; line < qMax(actual.size(), expected.size()); ++line) {
        if (actual.value(line) != expected.value(line) || (line < actual.size()) != (line < expected.size()))
            return QStringLiteral("line %1 is\n  \"%2\" instead of\n  \"%3\"")
                .arg(line + 1)
                .arg(QString::fromLatin1(actual.value(line)), QString::fromLatin1(expected.value(line)));
    }
    return {};
}

void addScenes(const char *name, int parts)
{
    QTest::addColumn<QStringList>("scene");
    for (const QStringList &scene : dataLines(qPrintable(pathOf(name)), parts, parts))
        QTest::newRow(qPrintable(scene[0])) << scene;
}

QSize sizeOf(const QString &text)
{
    return {text.section('x', 0, 0).toInt(), text.section('x', 1).toInt()};
}

QVector<Report> reports()
{
    QVector<Report> reports;
    for (const QStringList &line : dataLines(qPrintable(pathOf("reports.txt")), 3, 3))
        reports.append({hex(line[2].toLatin1()), noon.addMSecs(line[1].toInt())});
    return reports;
}

void verifyNone(const QString &difference)
{
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

} // namespace reference
