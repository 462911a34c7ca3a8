#include <QDate>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "monitor/monitorview.h"
#include "qlineupdownedit.h"
#include "support/tests.h"

/// Log folder and settings that cannot be used: the rows are shown, the window works, nothing else is
/// touched. The tests may run as root, to whom permissions mean nothing.
class HomeFolder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void logFolderIsADeadLink();
    void homeIsMissingAndCannotBeMade();
    void diskIsFull();
    void settings_data();
    void settings();
    void settingsOfAnotherVersionAreKept();

private:
    QString folder() const { return home->path() + "/qorvexgraph logs"; }
    static QString todaysLog();

    std::unique_ptr<QTemporaryDir> home;
};

void HomeFolder::init()
{
    home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(home->path()));
    QFile::remove(QSettings("Corvane", "qorvexgraph").fileName());
}

void HomeFolder::cleanup()
{
    home.reset();
}

QString HomeFolder::todaysLog()
{
    return QDate::currentDate().toString("ddd-MMM-d-yy.log");
}

void HomeFolder::logFolderIsADeadLink()
{
    QVERIFY(QFile::link("/nowhere/at/all", folder()));
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.view->AddData("A", "B");
    QCOMPARE(monitorView.rows(), QStringList("A   B"));
    QVERIFY(QFileInfo(folder()).isSymLink());
    QVERIFY(!QFileInfo::exists(folder()));
    // The next row finds the folder once it is there.
    QVERIFY(QFile::remove(folder()));
    monitorView.view->AddData("C", QString());
    QCOMPARE(QDir(folder()).entryList(QDir::Files).size(), 1);
}

void HomeFolder::homeIsMissingAndCannotBeMade()
{
    QFile file(home->path() + "/file");
    QVERIFY(file.open(QIODevice::WriteOnly));
    qputenv("HOME", QFile::encodeName(file.fileName() + "/home"));
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.view->AddData("A", QString());
    QCOMPARE(monitorView.rows(), QStringList("A"));
    QCOMPARE(file.size(), qint64(0));
}

// What a full disk does: the file opens, and takes no byte.
void HomeFolder::diskIsFull()
{
    QVERIFY(QDir().mkpath(folder()));
    if (QTime::currentTime() > QTime(23, 59))
        QTest::qWait(61000);
    const QString log = folder() + "/" + todaysLog();
    QVERIFY(QFile::link("/dev/full", log));
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    for (int row = 0; row < 200; ++row)
        monitorView.view->AddData(QString::number(row), QString(5000, 'x'));
    // 152 rows, cut back to one, and 48 more.
    QCOMPARE(monitorView.rows().size(), 49);
    QVERIFY(monitorView.view->logEnabled);
    // There is room again.
    QVERIFY(QFile::remove(log));
    monitorView.view->AddData("room", QString());
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("room\n"));
}

void HomeFolder::settings_data()
{
    QTest::addColumn<QString>("target"); // a link to this; empty for a folder in the file's place
    QTest::addColumn<QByteArray>("contents");
    QByteArray random;
    for (int i = 0; i < 4096; ++i)
        random += static_cast<char>((i * 7919) >> 3);
    addRow("a folder", QString(), QByteArray());
    addRow("a file that nobody can write", "/proc/version", QByteArray());
    // Not the full device: settings are replaced as a whole, and root would replace the device.
    addRow("a dead link", "/nowhere/at/all", QByteArray());
    addRow("garbage", QString(), random);
    addRow("no end of a section", QString(), QByteArray("[General\nMonitor Font Size=12\n"));
}

void HomeFolder::settings()
{
    QFETCH(QString, target);
    QFETCH(QByteArray, contents);
    const QString path = QSettings("Corvane", "qorvexgraph").fileName();
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    if (!target.isEmpty()) {
        QVERIFY(QFile::link(target, path));
    } else if (contents.isEmpty()) {
        QVERIFY(QDir().mkpath(path));
    } else {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(contents), qint64(contents.size()));
    }
    {
        MonitorView monitorView;
        monitorView.window.show();
        QVERIFY(!monitorView.view->logEnabled);
        QCOMPARE(monitorView.window.commandLine->historyLines(), QStringList());
        monitorView.window.commandLine->addToHistory("line");
        monitorView.view->AddData("A", QString());
        QCOMPARE(monitorView.rows(), QStringList("A"));
        monitorView.window.close();
    }
    QFileInfo(path).isDir() ? QDir().rmdir(path) : QFile::remove(path);
}

void HomeFolder::settingsOfAnotherVersionAreKept()
{
    {
        QSettings settings("Corvane", "qorvexgraph");
        settings.setValue("version", 99);
        settings.setValue("Monitor Font Size", "eleven and a half");
        settings.setValue("columns/hidden", QStringList({"a", "b"}));
        settings.setValue("history/0", "from there");
    }
    {
        MonitorView monitorView;
        QCOMPARE(monitorView.window.commandLine->historyLines(), QStringList("from there"));
        monitorView.window.close();
    }
    const QSettings settings("Corvane", "qorvexgraph");
    QCOMPARE(settings.value("version").toInt(), 99);
    QCOMPARE(settings.value("columns/hidden").toStringList(), QStringList({"a", "b"}));
    QCOMPARE(settings.value("history/0").toString(), QString("from there"));
}

PADSCOPE_TESTS(HomeFolder);
#include "tst_homefolder.moc"
