#include <QProcess>

#include "support/entrypointnames.h"
#include "support/tests.h"

/// What the loader finds in the library.
class tst_exports : public QObject
{
    Q_OBJECT

private slots:
    void exactlyTheEntryPointsAndTheControl();
    void soname();
};

namespace {

QStringList outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromLatin1(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

} // namespace

void tst_exports::exactlyTheEntryPointsAndTheControl()
{
    QStringList expected =
        entryPointNames +
        QStringList{"orvexsim_plug",           "orvexsim_unplug",           "orvexsim_set_rate",
                    "orvexsim_send",           "orvexsim_boards",           "orvexsim_send_on",
                    "orvexsim_totals",         "orvexsim_counts",           "orvexsim_wait_delivered",
                    "orvexsim_scenario_count", "orvexsim_scenario",         "orvexsim_last_error",
                    "orvexsim_choose",         "orvexsim_current_scenario", "orvexsim_trigger",
                    "orvexsim_fault",          "orvexsim_journal_length",   "orvexsim_journal",
                    "orvexsim_calibration",    "orvexsim_fault_text",       "orvexsim_fault_is_on",
                    "orvexsim_replay",         "orvexsim_replay_is_on",     "orvexsim_replay_pause",
                    "orvexsim_replay_step",    "orvexsim_replay_seek",      "orvexsim_replay_rate",
                    "orvexsim_replay_restart"};
    expected.sort();

    QStringList exported;
    for (const QString &line : outputOf("nm", {"-D", "--defined-only", "--format=posix", SIMULATOR_FILE}))
        exported.append(line.section(' ', 0, 0));
    exported.sort();
    QCOMPARE(exported, expected);
}

void tst_exports::soname()
{
    const QStringList lines = outputOf("readelf", {"-d", SIMULATOR_FILE}).filter("(SONAME)");
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().endsWith("[liborvexboardex.so.1]"), qPrintable(lines.first()));
    QVERIFY(QString(SIMULATOR_FILE).endsWith("/liborvexboardex.so.1"));
}

PADSCOPE_TESTS(tst_exports);
#include "tst_exports.moc"
