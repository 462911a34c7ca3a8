#include "soak/resources.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

namespace {

long numberOf(const QList<QByteArray> &lines, const QByteArray &key)
{
    // "VmRSS:     12345 kB"
    for (const QByteArray &line : lines) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').constFirst().toLong();
    }
    return 0;
}

} // namespace

Resources Resources::now()
{
    const QDir files(QStringLiteral("/proc/self/fd"));
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> lines = status.readAll().split('\n');
    return {numberOf(lines, "VmRSS:"), files.entryList(QDir::AllEntries | QDir::System).size(),
            static_cast<int>(numberOf(lines, "Threads:"))};
}
