#include <QTemporaryDir>

#include "sharedring.h"
#include "simulator/simulatedlibrary.h"
#include "support/capturedoutput.h"
#include "support/tests.h"

/// A tap that cannot record, or may not, forwards. No function of this process records, as a process maps one
/// ring for good.
class ForwardingTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void withoutARing();
    void aRingThatCannotBeMapped_data();
    void aRingThatCannotBeMapped();
    void aRingOfAnother();

private:
    /// Attaches to a board through the tap, and sends it a report. \return what the tap has said
    static QByteArray saidWhileForwarding();
};

void ForwardingTests::init()
{
    qputenv("ORVEXSIM_SCENARIO", "no-boards");
    qputenv("PADSCOPE_DRIVER", SIMULATOR_FILE);
    qunsetenv("PADSCOPE_RING");
}

QByteArray ForwardingTests::saidWhileForwarding()
{
    CapturedOutput errors(stderr);
    Recorder recorder;
    SimulatedLibrary library(TAP_FILE);
    const Bytes report{1, 2, 3};
    const bool isAttached = library.orvexAttach && library.plug(7) == 0 && library.orvexAttach() == 1;
    if (isAttached) {
        library.orvexSetCallback(7, Recorder::data, &recorder);
        library.send(7, report.data(), 3);
        library.orvexDetach();
    }
    const bool isForwarded = recorder.timesSeen(report) == 1;
    return isForwarded ? errors.text() : QByteArray("not forwarded");
}

void ForwardingTests::withoutARing()
{
    QCOMPARE(saidWhileForwarding(), QByteArray());
}

void ForwardingTests::aRingThatCannotBeMapped_data()
{
    addColumns<QByteArray, QByteArray>("file", "reason");
    addRow("missing", QByteArray("missing"), QByteArray("No such file or directory"));
    addRow("empty", QByteArray("empty"), QByteArray("Invalid argument"));
    addRow("something else", QByteArray("zeros"), QByteArray("Invalid argument"));
    addRow("a folder", QByteArray("."), QByteArray("Is a directory"));
}

void ForwardingTests::aRingThatCannotBeMapped()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, reason);
    const QTemporaryDir folder;
    for (const char *name : {"empty", "zeros"}) {
        QFile made(folder.filePath(name));
        QVERIFY(made.open(QFile::WriteOnly));
        QVERIFY(made.resize(name == QByteArray("zeros") ? 1 << 20 : 0));
    }
    qputenv("PADSCOPE_RING", folder.filePath(file).toUtf8());
    QCOMPARE(saidWhileForwarding(),
             "padscope: nothing is recorded: the recorder's memory cannot be mapped: " + reason + '\n');
}

void ForwardingTests::aRingOfAnother()
{
    const recorder::SharedRing shared{64 * 1024, 1};
    shared.control().owner = 1;
    qputenv("PADSCOPE_RING", shared.path().c_str());
    QCOMPARE(saidWhileForwarding(), QByteArray());
    QCOMPARE(shared.control().owner.load(), 1);
    QCOMPARE(shared.control().forwardingProcesses.load(), 1U);
    QCOMPARE(shared.control().reserved.load(), std::uint64_t{0});
}

PADSCOPE_TESTS(ForwardingTests);
#include "tst_forwarding.moc"
