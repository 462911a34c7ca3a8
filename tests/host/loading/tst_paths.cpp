#include "host/examplefolder.h"
#include "paths.h"
#include "support/tests.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Gives up, while in scope, the right to read what only its owner may read.
class Stranger
{
public:
    Stranger()
    {
        if (geteuid() == 0 && seteuid(65534) != 0)
            qFatal("the user cannot be changed");
    }
    ~Stranger()
    {
        if (getuid() == 0 && seteuid(0) != 0)
            qFatal("the user cannot be changed back");
    }
    Stranger(const Stranger &) = delete;
    Stranger &operator=(const Stranger &) = delete;
};

} // namespace

/// Each way in which a path may be of no use has its own reason.
class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void tellsReasonAgainstFile_data();
    void tellsReasonAgainstFile();
    void tellsReasonAgainstLibrary_data();
    void tellsReasonAgainstLibrary();
    void tellsReasonAgainstFolder_data();
    void tellsReasonAgainstFolder();
    void tellsWhatMayNotBeRead();

private:
    QString path(const QString &name) const { return folder_.filePath(name); }

    ExampleFolder folder_;
};

void PathsTest::initTestCase()
{
    QVERIFY(folder_.addFile(QStringLiteral("file"), "a text\n"));
    QVERIFY(folder_.addFile(QStringLiteral("empty"), {}));
    QVERIFY(folder_.addLibrary(QStringLiteral("plain_library")));
    QVERIFY(QDir(folder_.path()).mkdir(QStringLiteral("folder")));
    QVERIFY(QFile::link(path(QStringLiteral("loop")), path(QStringLiteral("loop"))));
    QVERIFY(QFile::link(path(QStringLiteral("gone")), path(QStringLiteral("link"))));
    QCOMPARE(mkfifo(QFile::encodeName(path(QStringLiteral("pipe"))).constData(), 0600), 0);
}

void PathsTest::tellsReasonAgainstFile_data()
{
    addColumns<QString, QString>("name", "reason");
    addRow("a file", "file", QString());
    addRow("no such file", "none", "no such file");
    addRow("a link to nothing", "link", "no such file");
    addRow("a folder", "folder", "a folder, not a file");
    addRow("a pipe", "pipe", "a device, pipe or socket, not a file");
    addRow("below a file", "file/below", "Not a directory");
    addRow("a link to itself", "loop", "Too many levels of symbolic links");
    addRow("an endless name", QString(300, QLatin1Char('x')), "File name too long");
}

void PathsTest::tellsReasonAgainstFile()
{
    QFETCH(QString, name);
    QTEST(reasonAgainstFile(path(name)), "reason");
}

void PathsTest::tellsReasonAgainstLibrary_data()
{
    addColumns<QString, QString>("name", "reason");
    addRow("a library", "plain_library.so", QString());
    addRow("a text", "file", "not a library");
    addRow("an empty file", "empty", "not a library");
    addRow("a folder", "folder", "a folder, not a file");
}

void PathsTest::tellsReasonAgainstLibrary()
{
    QFETCH(QString, name);
    QTEST(reasonAgainstLibrary(path(name)), "reason");
}

void PathsTest::tellsReasonAgainstFolder_data()
{
    addColumns<QString, QString>("name", "reason");
    addRow("a folder", "folder", QString());
    addRow("no such folder", "none", "no such folder");
    addRow("a file", "file", "a file, not a folder");
    addRow("below a file", "file/below", "Not a directory");
}

void PathsTest::tellsReasonAgainstFolder()
{
    QFETCH(QString, name);
    QTEST(reasonAgainstFolder(path(name)), "reason");
}

void PathsTest::tellsWhatMayNotBeRead()
{
    const ExampleFolder closed;
    QVERIFY(closed.addFile(QStringLiteral("file"), "a text\n"));
    const QByteArray folder = QFile::encodeName(closed.path());
    const QByteArray file = folder + "/file";
    QCOMPARE(chmod(file.constData(), 0), 0);
    QCOMPARE(chmod(folder.constData(), 0711), 0);
    {
        const Stranger stranger;
        QCOMPARE(reasonAgainstFile(closed.filePath(QStringLiteral("file"))),
                 QStringLiteral("Permission denied"));
        QCOMPARE(reasonAgainstLibrary(closed.filePath(QStringLiteral("file"))),
                 QStringLiteral("Permission denied"));
    }
    QCOMPARE(chmod(folder.constData(), 0), 0);
    {
        const Stranger stranger;
        QCOMPARE(reasonAgainstFolder(closed.path()), QStringLiteral("Permission denied"));
        QCOMPARE(reasonAgainstWritingTo(closed.path()), QStringLiteral("Permission denied"));
    }
    QCOMPARE(chmod(folder.constData(), 0700), 0);
}

PADSCOPE_TESTS(PathsTest);
#include "tst_paths.moc"
