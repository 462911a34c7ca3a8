#include <QDir>
#include <QSettings>

#include "program.h"
#include "support/otherstore.h"
#include "support/tests.h"

/// A recording during which the Monitor was shown and logged.
class MonitorLogTests : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreTheLog();
};

void MonitorLogTests::rowsAreTheLog()
{
    QSettings settings = otherStore();
    settings.setValue("Log To File", true);
    settings.setValue("monitor.displayThreshold", 0);
    settings.sync();
    const Files files;
    const QString capture = files.path("x.pcapng");
    const ProgramRun record =
        padscope({"record", "-o", capture, "--", HOST_PROGRAM, "--plugins", PADSCOPE_PLUGIN_FOLDER,
                  "--simulate", TEST_FOLDER "/apart.json", "--type", "?", "--tab", "Monitor=5"});
    QVERIFY2(!record.errors.contains("padscope:"), record.errors);
    QCOMPARE(record.status, 0);

    QByteArray log;
    const QDir folder(QDir::homePath() + "/qorvexgraph logs");
    for (const QString &name : folder.entryList(QDir::Files, QDir::Time | QDir::Reversed))
        log += Files::read(folder.filePath(name));
    const QList<QByteArray> lines = log.split('\n');
    QVERIFY(lines.contains("half a line, and its end."));
    QVERIFY(lines.contains("and more"));
    QVERIFY(lines.contains("shown late"));
    QVERIFY(lines.contains("in time."));
    QVERIFY(!log.contains("too soon"));
    QVERIFY(lines.size() > 20);

    const ProgramRun decode = padscope({"decode", "--format", "rows", "--threshold", "0", capture});
    QCOMPARE(decode.lines(), lines.mid(0, lines.size() - 1));
    QCOMPARE(decode.output, log);
    QCOMPARE(decode.status, 0);
}

PADSCOPE_TESTS(MonitorLogTests);
#include "tst_monitorlog.moc"
