#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

inline QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

/// What a program prints on standard output. Fails the test when its status is neither 0 nor `otherStatus`,
/// or when it says something on standard error, of which tshark's line for root and those of Qt's platform
/// are none.
QByteArray outputOf(const QString &program, const QStringList &arguments, int otherStatus = 0);

/// A capture, and what tshark shows of it with the dissector that `padscope dissector` prints.
class Shark
{
public:
    Shark();

    /// Writes packets, 1 ms apart, to the capture.
    void write(const QList<QByteArray> &packets);
    QString capture() const { return folder.filePath(QStringLiteral("test.pcapng")); }

    QString dissector() const { return folder.filePath(QStringLiteral("padscope.lua")); }

    QByteArray output(const QStringList &arguments) const;
    /// Of each packet the fields, which are empty where it has none.
    QList<QStringList> fields(const QStringList &names, const QStringList &arguments = {}) const;
    /// The trees of the packets, without what Wireshark says of the frames; a line each.
    QList<QStringList> trees() const;

private:
    QTemporaryDir folder;
};
