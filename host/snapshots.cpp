#include "snapshots.h"

#include <filesystem>
#include <QBuffer>
#include <QDir>
#include <QPixmap>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTabWidget>
#include <QWidget>
#include <system_error>

#include "paths.h"
#include "toolparts.h"

namespace {

/// File names of all tabs, no two alike.
QStringList namesOf(const QTabWidget &tabs)
{
    QStringList names;
    const QStringList captions = tabCaptions(tabs);
    for (const QString &caption : captions) {
        const QString wanted = snapshotName(caption);
        QString name = wanted;
        for (int number = 2; names.contains(name); ++number)
            name = QStringLiteral("%1-%2").arg(wanted).arg(number);
        names += name;
    }
    return names;
}

/// Only a second write tells why the first one was short.
bool writeAll(QIODevice &device, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 more = device.write(bytes.constData() + done, bytes.size() - done);
        if (more <= 0)
            return false;
        done += more;
    }
    return true;
}

/// Leaves the file as it was, or none, when there is no room for the picture.
QString saveSnapshot(QWidget &window, const QString &folder, const QString &name)
{
    QByteArray picture;
    QBuffer buffer(&picture);
    window.grab().save(&buffer, "PNG");
    QSaveFile file(QDir(folder).filePath(name + QStringLiteral(".png")));
    // Unbuffered: commit() does not notice when writing the buffer fails.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, picture) && file.commit())
        return {};
    return QStringLiteral("%1: can't be written: %2").arg(file.fileName(), file.errorString());
}

} // namespace

QString snapshotName(const QString &caption)
{
    static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{N}]+"));
    const QStringList words = caption.toLower().split(others, Qt::SkipEmptyParts);
    return words.isEmpty() ? QStringLiteral("tab") : words.join(QLatin1Char('-'));
}

QString prepareSnapshotFolder(const QString &folder)
{
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(folder).toStdString(), error);
    const QString reason =
        error ? QString::fromLocal8Bit(error.message().c_str()) : reasonAgainstWritingTo(folder);
    return reason.isEmpty() ? QString() : QStringLiteral("--snapshot %1: %2").arg(folder, reason);
}

QString saveSnapshots(QWidget &window, QTabWidget *tabs, const QString &folder)
{
    if (!tabs)
        return saveSnapshot(window, folder, QStringLiteral("window"));
    const QStringList names = namesOf(*tabs);
    const int shown = tabs->currentIndex();
    QString error;
    for (int i = 0; i < names.size() && error.isEmpty(); ++i) {
        tabs->setCurrentIndex(i);
        error = saveSnapshot(window, folder, names[i]);
    }
    tabs->setCurrentIndex(shown);
    return error;
}
