#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>
#include <unistd.h>

#include "paths.h"
#include "support/tests.h"

using Reason = QString (*)(const QString &path);
Q_DECLARE_METATYPE(Reason)

/// Each way in which a path may be of no use has its own reason.
class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void givesReason_data();
    void givesReason();
    void givesReasonWithoutPermission_data();
    void givesReasonWithoutPermission();

private:
    void addFile(const QString &name, const QByteArray &content) const;
    QString path(const QString &name) const { return folder_.filePath(name); }

    const QTemporaryDir folder_;
};

void PathsTest::addFile(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void PathsTest::initTestCase()
{
    addFile("text", "a text\n");
    addFile("empty", "");
    addFile("library", "\177ELF");
    for (const char *name : {"folder", "private", "closed"})
        QVERIFY(QDir(folder_.path()).mkdir(name));
    addFile("private/text", "a text\n");
    QVERIFY(QFile::link(path("loop"), path("loop")));
    QVERIFY(QFile::link(path("gone"), path("link")));
    QCOMPARE(mkfifo(qPrintable(path("pipe")), 0600), 0);
    QCOMPARE(chmod(qPrintable(path("private/text")), 0), 0);
    QCOMPARE(chmod(qPrintable(path("closed")), 0), 0);
    // for the user that the last test becomes
    QCOMPARE(chmod(qPrintable(folder_.path()), 0711), 0);
}

void PathsTest::givesReason_data()
{
    addColumns<Reason, QString, QString>("against", "name", "reason");

    const Reason file = reasonAgainstFile;
    addRow("file", file, "text", "");
    addRow("missing file", file, "none", "no such file");
    addRow("link to nothing as a file", file, "link", "no such file");
    addRow("folder as a file", file, "folder", "a folder, not a file");
    addRow("pipe as a file", file, "pipe", "a device, pipe or socket, not a file");
    addRow("file below a file", file, "text/below", "Not a directory");
    addRow("link to itself", file, "loop", "Too many levels of symbolic links");
    addRow("endless name", file, QString(300, 'x'), "File name too long");

    const Reason library = reasonAgainstLibrary;
    addRow("library", library, "library", "");
    addRow("text as a library", library, "text", "not a library");
    addRow("empty file as a library", library, "empty", "not a library");
    addRow("folder as a library", library, "folder", "a folder, not a file");

    const Reason folder = reasonAgainstFolder;
    addRow("folder", folder, "folder", "");
    addRow("missing folder", folder, "none", "no such folder");
    addRow("file as a folder", folder, "text", "a file, not a folder");
    addRow("folder below a file", folder, "text/below", "Not a directory");
    addRow("folder to write to", Reason(reasonAgainstWritingTo), "folder", "");
}

void PathsTest::givesReason()
{
    QFETCH(Reason, against);
    QFETCH(QString, name);
    QTEST(against(path(name)), "reason");
}

void PathsTest::givesReasonWithoutPermission_data()
{
    addColumns<Reason, QString>("against", "name");
    addRow("file", Reason(reasonAgainstFile), "private/text");
    addRow("library", Reason(reasonAgainstLibrary), "private/text");
    addRow("folder", Reason(reasonAgainstFolder), "closed");
    addRow("folder to write to", Reason(reasonAgainstWritingTo), "closed");
}

/// As a user who owns nothing here, when the tests run as root, to whom permissions mean nothing.
void PathsTest::givesReasonWithoutPermission()
{
    QFETCH(Reason, against);
    QFETCH(QString, name);
    const bool isRoot = getuid() == 0;
    QVERIFY(!isRoot || seteuid(65534) == 0);
    const QString reason = against(path(name));
    QVERIFY(!isRoot || seteuid(0) == 0);
    QCOMPARE(reason, QString("Permission denied"));
}

PADSCOPE_TESTS(PathsTest);
#include "tst_paths.moc"
