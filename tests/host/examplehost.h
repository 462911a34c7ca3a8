#pragma once

#include <QAction>
#include <QFile>
#include <QPluginLoader>
#include <QTemporaryDir>

#include "hostwindow.h"

/// A folder of example plugins, and the file into which they write what happens to them.
class ExampleFolder
{
public:
    /// \param targets of tests/host/examples
    explicit ExampleFolder(const QStringList &targets = {})
    {
        qputenv("EXAMPLE_RECORD", QFile::encodeName(path("record")));
        for (const QString &target : targets) {
            if (!QFile::copy(EXAMPLE_LIBRARIES "/lib" + target + ".so", path(target + ".so")))
                qFatal("no library %s", qPrintable(target));
        }
    }

    QString path(const QString &name = {}) const { return folder_.filePath(name); }

    void addFile(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("no file %s", qPrintable(name));
    }

    /// What happened so far, in order.
    QStringList events() const
    {
        QFile file(path("record"));
        file.open(QIODevice::ReadOnly);
        return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    }

private:
    QTemporaryDir folder_;
};

/// The host's window with three tools: "Second", "Windowless", which has none, and "Tenth".
struct ExampleHost
{
    const LoadedPlugin &second() const { return scan.plugins.at(0); }
    const LoadedPlugin &windowless() const { return scan.plugins.at(1); }
    const LoadedPlugin &tenth() const { return scan.plugins.at(2); }

    ExampleFolder folder{{"example_tenth", "example_second", "example_windowless"}};
    PluginScan scan = scanPlugins({folder.path()});
    std::unique_ptr<HostWindow> window = std::make_unique<HostWindow>(scan.plugins);
};

inline QStringList captions(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions)
        texts += action->text();
    return texts;
}

/// Ends the program, with a list of what there is, when no action has this caption.
inline QAction &actionNamed(const QList<QAction *> &actions, const char *caption)
{
    for (QAction *action : actions) {
        if (action->text() == caption)
            return *action;
    }
    qFatal("no action %s; there is %s", caption, qPrintable(captions(actions).join(", ")));
}
