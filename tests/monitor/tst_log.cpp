#include <memory>

#include <QDate>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "monitor/monitorview.h"
#include "support/tests.h"

namespace {

int messageCount = 0;

void countMessage(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++messageCount;
}

/// The name that the pattern "ddd-MMM-d-yy.log" gives a day in English.
QString logName(const QDate &day)
{
    const char *const days[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    const char *const months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    return QString("%1-%2-%3-%4.log")
        .arg(days[day.dayOfWeek() - 1])
        .arg(months[day.month() - 1])
        .arg(day.day())
        .arg(day.year() % 100, 2, 10, QChar('0'));
}

} // namespace

/// What goes to the log files. Each test has a home folder of its own.
class Log : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void folderAndName();
    void contents_data();
    void contents();
    void rowsAreAppended();
    void decodedRowsAreLogged();
    void textLineIsLogged();
    void loggingIsOffAtFirst();
    void loggingHoldsFromTheNextRow();
    void everyRowIsLoggedPastTheCut();
    void missingHomeIsCreated();
    void folderBlockedByAFile();
    void fileBlockedByAFolder();
    void folderRemovedBetweenRows();

private:
    QString folder() const { return home->path() + "/qorvexgraph logs"; }
    QStringList entries() const;
    QByteArray logged() const;

    std::unique_ptr<QTemporaryDir> home;
    QDate today;
};

void Log::init()
{
    home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", QFile::encodeName(home->path()));
    // A test takes far less than a minute.
    if (QTime::currentTime() > QTime(23, 59))
        QTest::qWait(61000);
    today = QDate::currentDate();
}

void Log::cleanup()
{
    home.reset();
}

QStringList Log::entries() const
{
    return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

QByteArray Log::logged() const
{
    QFile file(folder() + "/" + logName(today));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

void Log::folderAndName()
{
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    QVERIFY(!QFileInfo::exists(folder()));
    monitorView.view->AddData("A", "B");
    QCOMPARE(entries(), QStringList{logName(today)});
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
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.view->AddData(first, second);
    QTEST(logged(), "bytes");
}

void Log::rowsAreAppended()
{
    QVERIFY(QDir().mkpath(folder()));
    QFile file(folder() + "/" + logName(today));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("there before\n");
    file.close();
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.view->AddData("A", QString());
    QCOMPARE(logged(), QByteArray("there before\nA\n"));
    monitorView.view->AddData("B", "C");
    QCOMPARE(logged(), QByteArray("there before\nA\nB\nC\n"));
}

void Log::decodedRowsAreLogged()
{
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.send(hex("28 68 00 01"));
    monitorView.send(hex("00 21 41"));
    QCOMPARE(logged(), QByteArray("X Rs 0:     1  60:     0  120:     0 X Full 0:     0  60:     0  "
                                  "120:     0  Y Rs 0:     0  60:     0  120:     0 Y Full 0:     0  "
                                  "60:     0  120:     0  \n"
                                  "X Rs Num:   0  Y Rs Num:   0   X Fn Num   0 Y Fn Num   0   "
                                  "X Q:     0 Y Q:     0   DC Offsets: 0:     0  60:     0  120     0\n"
                                  ".!A\n00 21 41 \n"));
}

void Log::textLineIsLogged()
{
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.send(hex("02 32"), QTime(12, 0));
    monitorView.send(hex("00 32 41 42 0d 0a 43"), QTime(12, 1));
    QCOMPARE(logged(), QByteArray("AB..\n"));
    monitorView.view->OnTimerAddRest();
    QCOMPARE(logged(), QByteArray("AB..\nC\n"));
}

void Log::loggingIsOffAtFirst()
{
    MonitorView monitorView;
    monitorView.view->AddData("A", "B");
    QVERIFY(!QFileInfo::exists(folder()));
}

void Log::loggingHoldsFromTheNextRow()
{
    MonitorView monitorView;
    monitorView.view->AddData("before", QString());
    monitorView.view->LogToFile(true);
    QVERIFY(!QFileInfo::exists(folder()));
    monitorView.view->AddData("while", QString());
    monitorView.view->LogToFile(false);
    monitorView.view->AddData("after", QString());
    QCOMPARE(logged(), QByteArray("while\n"));
    QCOMPARE(monitorView.rows(), (QStringList{"before", "while", "after"}));
}

void Log::everyRowIsLoggedPastTheCut()
{
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    for (int row = 0; row < 153; ++row)
        monitorView.view->AddData("r", QString());
    QCOMPARE(monitorView.rows().size(), 2);
    QCOMPARE(logged(), QByteArray("r\n").repeated(153));
}

void Log::missingHomeIsCreated()
{
    const QString deepHome = home->path() + "/not/yet/there";
    qputenv("HOME", QFile::encodeName(deepHome));
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.view->AddData("A", QString());
    QVERIFY(QFileInfo::exists(deepHome + "/qorvexgraph logs/" + logName(today)));
}

void Log::folderBlockedByAFile()
{
    QFile blocker(folder());
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.write("in the way");
    blocker.close();
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    messageCount = 0;
    const QtMessageHandler handler = qInstallMessageHandler(countMessage);
    monitorView.view->AddData("lost", "too");
    qInstallMessageHandler(handler);
    QCOMPARE(messageCount, 0);
    QCOMPARE(monitorView.rows(), QStringList{"lost   too"});
    QVERIFY(blocker.open(QIODevice::ReadOnly));
    QCOMPARE(blocker.readAll(), QByteArray("in the way"));

    // The next row tries again.
    QVERIFY(blocker.remove());
    monitorView.view->AddData("kept", QString());
    QCOMPARE(logged(), QByteArray("kept\n"));
}

void Log::fileBlockedByAFolder()
{
    QVERIFY(QDir().mkpath(folder() + "/" + logName(today)));
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    messageCount = 0;
    const QtMessageHandler handler = qInstallMessageHandler(countMessage);
    monitorView.view->AddData("lost", QString());
    qInstallMessageHandler(handler);
    QCOMPARE(messageCount, 0);
    QCOMPARE(monitorView.rows(), QStringList{"lost"});
    QVERIFY(monitorView.view->logEnabled);

    QVERIFY(QDir(folder()).rmdir(logName(today)));
    monitorView.view->AddData("kept", QString());
    QCOMPARE(logged(), QByteArray("kept\n"));
}

void Log::folderRemovedBetweenRows()
{
    MonitorView monitorView;
    monitorView.view->LogToFile(true);
    monitorView.view->AddData("A", QString());
    QVERIFY(QDir(folder()).removeRecursively());
    monitorView.view->AddData("B", QString());
    QCOMPARE(logged(), QByteArray("B\n"));
}

PADSCOPE_TESTS(Log);
#include "tst_log.moc"
