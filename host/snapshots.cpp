#include "host/snapshots.h"

#include "host/toolparts.h"

#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QRegularExpression>
#include <QTabWidget>
#include <QWidget>

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

QString saveSnapshot(QWidget &window, const QString &folder, const QString &name)
{
    const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
    return window.grab().save(file) ? QString() : file + QStringLiteral(": can't be written");
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
    if (QDir().mkpath(folder) && QFileInfo(folder).isWritable())
        return {};
    return folder + QStringLiteral(": no folder that snapshots can be written to");
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
