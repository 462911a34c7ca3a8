#include "tests/soak/memory.h"

#include <QByteArray>
#include <QFile>

long residentKiB()
{
    const QByteArray key("VmRSS:");
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    // "VmRSS:     12345 kB"
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').constFirst().toLong();
    }
    return 0;
}
