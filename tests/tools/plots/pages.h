#pragma once

#include <QRegularExpression>

#include "program.h"

inline QStringList texts(const QString &page, const char *tag)
{
    const QRegularExpression pattern(QStringLiteral("<%1>([^<]*)</%1>").arg(QString::fromUtf8(tag)));
    QStringList found;
    for (auto matches = pattern.globalMatch(page); matches.hasNext();)
        found += matches.next().captured(1);
    return found;
}

/// The rows of all tables, their cells one behind the other.
inline QStringList rows(const QString &page)
{
    QStringList found;
    const QRegularExpression pattern(QStringLiteral("<tr>(.*)</tr>"));
    for (auto matches = pattern.globalMatch(page); matches.hasNext();)
        found += texts(matches.next().captured(1), "td").join(QStringLiteral(" | "));
    return found;
}

inline QStringList pictures(const QString &page)
{
    QStringList found;
    const QRegularExpression pattern(QStringLiteral("<svg.*?</svg>"),
                                     QRegularExpression::DotMatchesEverythingOption);
    for (auto matches = pattern.globalMatch(page); matches.hasNext();)
        found += matches.next().captured();
    return found;
}

inline QByteArray mark(const QByteArray &text)
{
    return blocks::packet(examplecapture::startNs + 1'100'000'000,
                          packetBytes(6, 0, 0, 0, 0, text, 0, 0, 11));
}

/// A report of board 1001, 10 ms behind the last.
inline QByteArray report(int index, const char *digits)
{
    return blocks::packet(
        examplecapture::startNs + 2'000'000'000 + quint64(index) * 10'000'000,
        packetBytes(1, 1, 0, 1001, 0, QByteArray::fromHex(digits), 1, 0, quint64(12 + index)));
}

/// The page that `padscope report` writes.
/// \param name of the page, and of its capture
inline QString page(const char *name, const QByteArray &capture, int status = 0)
{
    const Files files;
    const QString output = files.path(name) + QStringLiteral(".html");
    const ProgramRun run = padscope({"report", files.write(name, capture), "-o", output});
    if (run.status != status)
        qWarning("%s", run.errors.constData());
    return run.status == status ? QString::fromUtf8(Files::read(output)) : QString();
}
