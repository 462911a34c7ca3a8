#include <memory>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "monitor/monitortest.h"

namespace {

QDateTime now;

int messageCount = 0;

void countMessage(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++messageCount;
}

} // namespace

/// Takes the place of Qt's own for the objects that are linked into the program.
QDateTime QDateTime::currentDateTime()
{
    return now;
}

/// What goes to the log files. Each test has a home folder of its own, on Sunday, 15 November 2026.
class Log : public MonitorTest
{
    Q_OBJECT

private slots:
    void init();
    void contents_data();
    void contents();
    void rowsAreAppended();
    void loggingHoldsFromTheNextRow();
    void fileOfTheDay_data();
    void fileOfTheDay();
    void namesOfTheSystemLocale();
    void rowAfterMidnightGoesToTheNextDay();
    void missingHomeIsCreated();
    void blockedLogLosesTheRowAlone_data();
    void blockedLogLosesTheRowAlone();
    void folderRemovedBetweenRows();

private:
    QStringList files() const
    {
        return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QByteArray logged(const QString &name = "Sun-Nov-15-26.log") const;

    std::unique_ptr<QTemporaryDir> home;
    QDir folder;
};

void Log::init()
{
    home = std::make_unique<QTemporaryDir>();
    folder = QDir(home->filePath("qorvexgraph logs"));
    qputenv("HOME", QFile::encodeName(home->path()));
    now = QDateTime(QDate(2026, 11, 15), noon);
    MonitorTest::init();
    view->LogToFile(true);
}

QByteArray Log::logged(const QString &name) const
{
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

void Log::contents_data()
{
    addColumns<QString, QString, QByteArray>("first", "second", "bytes");
    addRow("both texts", "A", "B", QByteArray("A\nB\n"));
    addRow("first only", "A", "", QByteArray("A\n"));
    addRow("second only", "", "B", QByteArray("\nB\n"));
    addRow("neither", "", "", QByteArray("\n"));
    addRow("blanks are kept", " A  ", "  ", QByteArray(" A  \n  \n"));
    addRow("Latin-1", QString::fromUtf8("\xc3\xa4\xc2\xb5\xc3\xbf"), QString::fromUtf8("\xc3\x89"),
           QByteArray("\xe4\xb5\xff\n\xc9\n"));
    // The euro sign, a Greek letter, and one that takes two code units.
    addRow("characters that Latin-1 lacks", QString::fromUtf8("1 \xe2\x82\xac"),
           QString::fromUtf8("\xce\xb1 \xf0\x9f\x99\x82"), QByteArray("1 ?\n? ??\n"));
    addRow("line ends stay as they are", "A\r\nB", "\r", QByteArray("A\r\nB\n\r\n"));
}

void Log::contents()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(!folder.exists());
    view->AddData(first, second);
    QTEST(logged(), "bytes");
    QCOMPARE(files(), QStringList{"Sun-Nov-15-26.log"});
}

void Log::rowsAreAppended()
{
    QVERIFY(folder.mkpath("."));
    QFile file(folder.filePath("Sun-Nov-15-26.log"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("there before\n");
    file.close();
    add("A");
    QCOMPARE(logged(), QByteArray("there before\nA\n"));
    view->AddData("B", "C");
    QCOMPARE(logged(), QByteArray("there before\nA\nB\nC\n"));
}

void Log::loggingHoldsFromTheNextRow()
{
    view->LogToFile(false);
    add("before");
    view->LogToFile(true);
    QVERIFY(!folder.exists());
    add("while");
    view->LogToFile(false);
    add("after");
    QCOMPARE(logged(), QByteArray("while\n"));
    QCOMPARE(rows(), (QStringList{"before", "while", "after"}));
}

void Log::fileOfTheDay_data()
{
    addColumns<QDate, QString>("day", "file");
    addRow("a Sunday in November", QDate(2026, 11, 15), "Sun-Nov-15-26.log");
    addRow("day of one digit", QDate(2026, 3, 5), "Thu-Mar-5-26.log");
    addRow("year of one digit", QDate(2008, 2, 29), "Fri-Feb-29-08.log");
}

void Log::fileOfTheDay()
{
    QFETCH(QDate, day);
    now.setDate(day);
    add("A");
    QTEST(files().join(' '), "file");
}

// Read when a process begins, so in one of its own.
void Log::namesOfTheSystemLocale()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "es_ES.UTF-8");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(LOGROW_PROGRAM, QStringList());
    QVERIFY2(process.waitForFinished(60000), qPrintable(process.errorString()));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(files(), QStringList{"dom-nov-15-26.log"});
}

void Log::rowAfterMidnightGoesToTheNextDay()
{
    now = QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59, 900));
    add("old year");
    now = QDateTime(QDate(2027, 1, 1), QTime(0, 0, 0, 100));
    add("new year");
    QCOMPARE(files(), (QStringList{"Fri-Jan-1-27.log", "Thu-Dec-31-26.log"}));
    QCOMPARE(logged("Thu-Dec-31-26.log"), QByteArray("old year\n"));
    QCOMPARE(logged("Fri-Jan-1-27.log"), QByteArray("new year\n"));
}

void Log::missingHomeIsCreated()
{
    const QString deepHome = home->filePath("not/yet/there");
    qputenv("HOME", QFile::encodeName(deepHome));
    add("A");
    QVERIFY(QFileInfo::exists(deepHome + "/qorvexgraph logs/Sun-Nov-15-26.log"));
}

void Log::blockedLogLosesTheRowAlone_data()
{
    QTest::addColumn<bool>("isFile");
    addRow("by a file in the folder's place", true);
    addRow("by a folder in the file's place", false);
}

void Log::blockedLogLosesTheRowAlone()
{
    QFETCH(bool, isFile);
    QFile blocker(folder.path());
    if (isFile)
        QVERIFY(blocker.open(QIODevice::WriteOnly) && blocker.write("in the way") > 0 && blocker.flush());
    else
        QVERIFY(folder.mkpath("Sun-Nov-15-26.log"));
    messageCount = 0;
    const QtMessageHandler handler = qInstallMessageHandler(countMessage);
    view->AddData("lost", "too");
    qInstallMessageHandler(handler);
    QCOMPARE(messageCount, 0);
    QCOMPARE(rows(), QStringList{"lost   too"});
    QVERIFY(Inspect::isLogging(*view));

    // The next row tries again.
    if (isFile)
        QVERIFY(blocker.size() == 10 && blocker.remove());
    else
        QVERIFY(folder.rmdir("Sun-Nov-15-26.log"));
    add("kept");
    QCOMPARE(logged(), QByteArray("kept\n"));
}

void Log::folderRemovedBetweenRows()
{
    add("A");
    QVERIFY(folder.removeRecursively());
    add("B");
    QCOMPARE(logged(), QByteArray("B\n"));
}

PADSCOPE_TESTS(Log);
#include "tst_log.moc"
