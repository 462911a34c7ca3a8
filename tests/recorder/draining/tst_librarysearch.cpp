#include <QFile>
#include <QTemporaryDir>

#include "librarysearch.h"
#include "support/tests.h"

namespace {

const char libraryName[] = "/liborvexboardex.so.1";

QString found(const char *host = RECORDED_HOST)
{
    return QString::fromStdString(recorder::findDriverLibrary(host, TAP_FILE).path);
}

QString tapFolder()
{
    return QString(TAP_FILE).section('/', 0, -2);
}

} // namespace

class LibrarySearchTests : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("LD_LIBRARY_PATH"); }
    void looksInTheSearchPath_data();
    void looksInTheSearchPath();
    void passesByALinkToTheTap();
    void looksInTheHostsRunpath();
    void findsNone();
    void anyHost_data();
    void anyHost();
    void relativeFoldersAreTheHosts();
};

void LibrarySearchTests::looksInTheSearchPath_data()
{
    addColumns<QString, QString>("path", "expected");
    const QString all = SIMULATOR_FOLDER;
    const QString old = SIMULATOR_FOLDER "/old";
    addRow("one", all, all + libraryName);
    addRow("the first", old + ':' + all, old + libraryName);
    addRow("semicolon", old + ';' + all, old + libraryName);
    addRow("behind a folder without", "/nowhere::" + all, all + libraryName);
    addRow("behind the tap", tapFolder() + ':' + all, all + libraryName);
    addRow("the tap alone", tapFolder(), QString());
    addRow("none", QString("/nowhere"), QString());
}

void LibrarySearchTests::looksInTheSearchPath()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    qputenv("LD_LIBRARY_PATH", path.toUtf8());
    QCOMPARE(found(), expected);
}

void LibrarySearchTests::passesByALinkToTheTap()
{
    const QTemporaryDir folder;
    QVERIFY(QFile::link(TAP_FILE, folder.path() + libraryName));
    qputenv("LD_LIBRARY_PATH", (folder.path() + ":" SIMULATOR_FOLDER).toUtf8());
    QCOMPARE(found(), QString(SIMULATOR_FOLDER) + libraryName);
}

void LibrarySearchTests::looksInTheHostsRunpath()
{
    QCOMPARE(found(RECORDED_HOST_RUNPATH), QString(SIMULATOR_FOLDER) + libraryName);
    qputenv("LD_LIBRARY_PATH", SIMULATOR_FOLDER "/old");
    QCOMPARE(found(RECORDED_HOST_RUNPATH), QString(SIMULATOR_FOLDER "/old") + libraryName);
}

void LibrarySearchTests::findsNone()
{
    QCOMPARE(found(), QString());
    QCOMPARE(recorder::findDriverLibrary("host", TAP_FILE).places,
             std::string(
                 "LD_LIBRARY_PATH (empty), the RUNPATH of host, the loader's cache and its default folders"));
    qputenv("LD_LIBRARY_PATH", "/a:/b");
    QCOMPARE(recorder::findDriverLibrary("host", TAP_FILE).places,
             std::string(
                 "LD_LIBRARY_PATH (/a:/b), the RUNPATH of host, the loader's cache and its default folders"));
}

void LibrarySearchTests::anyHost_data()
{
    addColumns<QByteArray>("host");
    addRow("program", QByteArray(RECORDED_HOST));
    addRow("name in PATH", QByteArray("env"));
    addRow("script", QByteArray("script"));
    addRow("not there", QByteArray("/nowhere/host"));
    addRow("folder", QByteArray("/"));
    addRow("cut off", QByteArray("cut"));
    addRow("empty", QByteArray(""));
}

void LibrarySearchTests::anyHost()
{
    QFETCH(QByteArray, host);
    qputenv("LD_LIBRARY_PATH", SIMULATOR_FOLDER);
    const QTemporaryDir folder;
    QFile made(folder.filePath(host));
    if (host == "script" || host == "cut") {
        QVERIFY(made.open(QFile::WriteOnly));
        made.write(host == "script" ? "#!/bin/sh\nexit 0\n" : QByteArray("\177ELF\2\1\1", 7));
        made.close();
        host = made.fileName().toUtf8();
    }
    QCOMPARE(found(host), QString(SIMULATOR_FOLDER) + libraryName);
}

void LibrarySearchTests::relativeFoldersAreTheHosts()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(SIMULATOR_FOLDER));
    qputenv("LD_LIBRARY_PATH", "old");
    const QString file = found();
    QDir::setCurrent(before);
    QCOMPARE(QDir::cleanPath(file), QString(SIMULATOR_FOLDER "/old") + libraryName);
    QVERIFY(file.startsWith('/'));
}

PADSCOPE_TESTS(LibrarySearchTests);
#include "tst_librarysearch.moc"
