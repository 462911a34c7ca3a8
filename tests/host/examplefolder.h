#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

/// A plugin folder for one test, and the file into which example plugins write what happens to them.
class ExampleFolder
{
public:
    ExampleFolder() { qputenv("EXAMPLE_RECORD", QFile::encodeName(recordFile())); }
    ~ExampleFolder() { qunsetenv("EXAMPLE_RECORD"); }

    QString path() const { return folder_.path(); }
    QString filePath(const QString &name) const { return folder_.filePath(name); }

    /// Copies one of the libraries that were built for the tests, by the name of its target.
    bool addLibrary(const QString &target) const
    {
        return QFile::copy(QStringLiteral(EXAMPLE_LIBRARIES "/lib%1.so").arg(target),
                           filePath(target + QStringLiteral(".so")));
    }

    bool addFile(const QString &name, const QByteArray &content) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    /// What happened so far, in order.
    QStringList events() const
    {
        QFile file(recordFile());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

private:
    QString recordFile() const { return folder_.filePath(QStringLiteral("record")); }

    QTemporaryDir folder_;
};

/// One with two tools, as most tests need.
class ToolFolder : public ExampleFolder
{
public:
    ToolFolder()
    {
        if (!addLibrary(QStringLiteral("example_tenth")) || !addLibrary(QStringLiteral("example_second")))
            qFatal("the example plugins cannot be copied");
    }

    /// The host's arguments, with those that make it look here.
    QStringList with(const QStringList &arguments) const
    {
        return QStringList{QStringLiteral("--plugins"), path()} + arguments;
    }
};
