#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include "qlineupdownedit.h"
#include "support/tests.h"
#include "support/toolwindow.h"

/// Log folder and settings that cannot be used: the rows are shown, the window works, nothing else is
/// touched. The tests may run as root, to whom permissions mean nothing.
class HomeFolder : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void logFolderIsADeadLink();
    void homeIsMissingAndCannotBeMade();
    void diskIsFull();
    void settings_data();
    void settings();
    void settingsOfAnotherVersionAreKept();

private:
    QString folder() const { return home->filePath("qorvexgraph logs"); }

    std::unique_ptr<QTemporaryDir> home;
};

namespace {

QStringList historyOf(const ToolWindow &tool)
{
    return tool.window.findChild<QLineUpDownEdit *>()->historyLines();
}

bool isLogging(const ToolWindow &tool)
{
    return tool.monitorTab->findChild<QCheckBox *>()->isChecked();
}

} // namespace

void HomeFolder::init()
{
    home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(home->path()));
    QFile::remove(QSettings("Corvane", "qorvexgraph").fileName());
}

void HomeFolder::logFolderIsADeadLink()
{
    QVERIFY(QFile::link("/nowhere/at/all", folder()));
    const ToolWindow tool;
    tool.monitorTab->LogToFile(true);
    tool.monitorTab->AddData("A", "B");
    QCOMPARE(tool.rows(), QStringList("A   B"));
    QVERIFY(QFileInfo(folder()).isSymLink());
    QVERIFY(!QFileInfo::exists(folder()));
    // The next row finds the folder once it is there.
    QVERIFY(QFile::remove(folder()));
    tool.monitorTab->AddData("C", "");
    QCOMPARE(QDir(folder()).entryList(QDir::Files).size(), 1);
}

void HomeFolder::homeIsMissingAndCannotBeMade()
{
    QFile file(home->filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    qputenv("HOME", QFile::encodeName(file.fileName() + "/home"));
    const ToolWindow tool;
    tool.monitorTab->LogToFile(true);
    tool.monitorTab->AddData("A", "");
    QCOMPARE(tool.rows(), QStringList("A"));
    QCOMPARE(file.size(), qint64(0));
}

// What a full disk does: the file opens, and takes no byte.
void HomeFolder::diskIsFull()
{
    if (QTime::currentTime() > QTime(23, 59))
        QTest::qWait(61000);
    QVERIFY(QDir().mkpath(folder()));
    const QString log = folder() + QDate::currentDate().toString("/ddd-MMM-d-yy.log");
    QVERIFY(QFile::link("/dev/full", log));
    const ToolWindow tool;
    tool.monitorTab->LogToFile(true);
    for (int row = 0; row < 200; ++row)
        tool.monitorTab->AddData(QString::number(row), QString(5000, 'x'));
    // 152 rows, cut back to one, and 48 more.
    QCOMPARE(tool.rows().size(), 49);
    QVERIFY(isLogging(tool));
    // There is room again.
    QVERIFY(QFile::remove(log));
    tool.monitorTab->AddData("room", "");
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
    addRow("a folder", "", QByteArray());
    addRow("a file that nobody can write", "/proc/version", QByteArray());
    // Not the full device: settings are replaced as a whole, and root would replace the device.
    addRow("a dead link", "/nowhere/at/all", QByteArray());
    addRow("garbage", "", random);
    addRow("no end of a section", "", QByteArray("[General\nMonitor Font Size=12\n"));
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
        ToolWindow tool;
        tool.window.show();
        QVERIFY(!isLogging(tool));
        QCOMPARE(historyOf(tool), QStringList());
        tool.window.findChild<QLineUpDownEdit *>()->addToHistory("line");
        tool.monitorTab->AddData("A", "");
        QCOMPARE(tool.rows(), QStringList("A"));
        tool.window.close();
    }
    QFileInfo(path).isDir() ? QDir().rmdir(path) : QFile::remove(path);
}

void HomeFolder::settingsOfAnotherVersionAreKept()
{
    QSettings settings("Corvane", "qorvexgraph");
    settings.setValue("version", 99);
    settings.setValue("Monitor Font Size", "eleven and a half");
    settings.setValue("columns/hidden", QStringList({"a", "b"}));
    settings.setValue("history/0", "from there");
    settings.sync();
    {
        ToolWindow tool;
        QCOMPARE(historyOf(tool), QStringList("from there"));
        tool.window.close();
    }
    settings.sync();
    QCOMPARE(settings.value("version").toInt(), 99);
    QCOMPARE(settings.value("columns/hidden").toStringList(), QStringList({"a", "b"}));
    QCOMPARE(settings.value("history/0").toString(), QString("from there"));
}

PADSCOPE_TESTS(HomeFolder);
#include "tst_homefolder.moc"
