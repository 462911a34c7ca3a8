#include <QDir>
#include <QRegularExpression>
#include <QSettings>

#include "program.h"
#include "replayed.h"
#include "support/otherstore.h"
#include "support/tests.h"

/// Recorded, replayed and recorded again: reports, durations, and the rows of the Monitor.
class ReplayedAgainTests : public QObject
{
    Q_OBJECT

private slots:
    void sendsWhatWasRecorded_data();
    void sendsWhatWasRecorded();
    void theMonitorShowsTheSameRows();
    void cleanup() { qunsetenv("LD_LIBRARY_PATH"); }
};

namespace {

constexpr int reportCount = 1200;

/// A host that waits for so many reports.
QStringList hostFor(int count)
{
    return {RECORDED_HOST, "load=liborvexboardex.so.1", "attach", QString("total=%1").arg(count), "detach"};
}

/// Takes the rows out of the day's logs.
QByteArray takeLog()
{
    const QDir folder(QDir::homePath() + "/qorvexgraph logs");
    QByteArray log;
    for (const QString &name : folder.entryList(QDir::Files, QDir::Time | QDir::Reversed)) {
        log += Files::read(folder.filePath(name));
        QFile::remove(folder.filePath(name));
    }
    return log;
}

/// Seconds from the first packet to the first command with which the tool closes: debug mode 1.
double closingSecond(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    quint64 firstNs = 0;
    double second = -1;
    while (second < 0 && reader.next() == capture::pcapng::Event::Packet) {
        const capture::Record &record = reader.record();
        firstNs = firstNs == 0 ? record.timeNs : firstNs;
        const bool isMode = record.header.kind == 2 && record.header.call == 32;
        if (isMode && capture::integerAt<std::int32_t>(record.payload, 4) == 1)
            second = double(record.timeNs - firstNs) / 1e9;
    }
    close(file);
    return second;
}

} // namespace

void ReplayedAgainTests::sendsWhatWasRecorded_data()
{
    addColumns<QString, double>("rate", "times");
    addRow("half", "0.5", 0.5);
    addRow("1", "1", 1.0);
    addRow("10", "10", 10.0);
    addRow("100", "100", 0.0);
    addRow("max", "max", 0.0);
}

/// Up to rate 10 the duration is right within 1 % or 20 ms.
void ReplayedAgainTests::sendsWhatWasRecorded()
{
    QFETCH(QString, rate);
    QFETCH(double, times);
    static const Files files;
    const QString first = files.path("first.pcapng");
    if (!QFile::exists(first)) {
        qputenv("LD_LIBRARY_PATH", QFileInfo(SIMULATOR_FILE).path().toUtf8());
        qputenv("ORVEXSIM_SCENARIO", "many-boards");
        QCOMPARE(padscope(QStringList{"record", "-o", first, "--"} + hostFor(reportCount)).status, 0);
    }
    const CapturedReports recorded = reportsOf(first);
    QVERIFY(recorded.reports.size() >= reportCount);
    const double wanted = times > 0 ? recorded.seconds() / times : 0;
    bool isInTime = false;
    for (int i = 0; i < 3 && !isInTime; ++i) { // the machine may be busy
        const QString again = files.path(qPrintable(QStringLiteral("again-%1-%2.pcapng").arg(rate).arg(i)));
        const ProgramRun run = padscope(QStringList{"replay", first, "--rate", rate, "--", PADSCOPE_PROGRAM,
                                                    "record", "-o", again, "--"} +
                                        hostFor(recorded.reports.size()));
        QCOMPARE(run.status, 0);
        QVERIFY2(run.errors.startsWith("replay: asked rate " + rate.toUtf8()), run.errors);
        const CapturedReports replayed = reportsOf(again);
        QCOMPARE(replayed.reports, recorded.reports);
        QCOMPARE(replayed.withoutFlag, 0);
        isInTime = times == 0 || std::abs(replayed.seconds() - wanted) <= std::max(0.01 * wanted, 0.02);
    }
    QVERIFY2(isInTime, qPrintable(QStringLiteral("longer or shorter than %1 s, each time").arg(wanted)));
}

/// Up to the tool's closing commands, whose answers it does not show.
void ReplayedAgainTests::theMonitorShowsTheSameRows()
{
    QSettings settings = otherStore();
    settings.setValue("Log To File", true);
    settings.setValue("monitor.displayThreshold", 0);
    settings.sync();
    takeLog();
    const Files files;
    const QString capture = files.path("x.pcapng");
    const QStringList host{HOST_PROGRAM, "--plugins", PADSCOPE_PLUGIN_FOLDER, "--type", "?"};
    const ProgramRun record =
        padscope(QStringList{"record", "-o", capture, "--"} + host +
                 QStringList{"--simulate", TEST_FOLDER "/apart.json", "--tab", "Monitor=5"});
    QCOMPARE(record.status, 0);
    const QByteArray rows = takeLog();
    QVERIFY(rows.count('\n') > 20);
    QVERIFY(rows.contains("half a line, and its end."));

    const double closing = closingSecond(capture);
    QVERIFY(closing > 4);
    const ProgramRun replay =
        padscope(QStringList{"replay", capture, "--to", QString::number(closing, 'f', 9), "--"} + host +
                 QStringList{"--simulate", "--tab", "Monitor=6"});
    QCOMPARE(replay.status, 0);
    QCOMPARE(takeLog(), rows);
}

PADSCOPE_TESTS(ReplayedAgainTests);
#include "tst_replayedagain.moc"
