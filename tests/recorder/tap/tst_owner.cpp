#include <QProcess>

#include "consumer.h"
#include "sharedring.h"
#include "support/tests.h"

using ring::Consumer;

/// Which process records, and what becomes of its recording when it forks, executes a file or unloads the
/// tap.
class OwnerTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void isNumberedAsTheRecorderSeesIt();
    void anotherProcessIsCountedOnce();
    void goesOnInAnotherImage();
    void leavesNoHolesBehindInAnotherImage();
    void leavesNoMemoryToChildren();
    void leavesNoCallToChildren();
    void unloadsTheTapAndKeepsTheLibrary_data();
    void unloadsTheTapAndKeepsTheLibrary();
    void findsNoLibrary();

private:
    /// Starts a host that does this.
    void start(QProcess &host, const QStringList &steps, const QStringList &before = {});
    void run(const QStringList &steps);
    /// What has crossed so far.
    int crossings();

    std::unique_ptr<recorder::SharedRing> shared;
    std::unique_ptr<Consumer> consumer;
    int taken = 0;
    QByteArray output;
};

void OwnerTests::init()
{
    qputenv("ORVEXSIM_SCENARIO", "no-boards");
    qputenv("PADSCOPE_DRIVER", SIMULATOR_FILE);
    taken = 0;
    shared = std::make_unique<recorder::SharedRing>(64 * 1024, 1);
    consumer = std::make_unique<Consumer>(shared->control());
    qputenv("PADSCOPE_RING", shared->path().c_str());
}

void OwnerTests::start(QProcess &host, const QStringList &steps, const QStringList &before)
{
    const QStringList command = before + QStringList{TAP_HOLDER} + steps;
    host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    host.start(command.first(), command.mid(1));
    QVERIFY(host.waitForStarted());
}

void OwnerTests::run(const QStringList &steps)
{
    QProcess host;
    start(host, steps);
    QVERIFY(host.waitForFinished());
    QCOMPARE(host.exitCode(), 0);
    output = host.readAll();
}

int OwnerTests::crossings()
{
    ring::Taken record;
    while (consumer->take(record, false) == Consumer::Step::Record)
        ++taken;
    return taken;
}

/// It has number 1 where it runs.
void OwnerTests::isNumberedAsTheRecorderSeesIt()
{
    const QStringList unshare{"unshare", "--pid", "--fork", "--kill-child"};
    if (QProcess::execute("unshare", QStringList{"--pid", "--fork", "true"}) != 0)
        QSKIP("this user may make no PID namespace");
    QProcess host;
    start(host, {"open", "call", "wait"}, unshare);
    QTRY_COMPARE_WITH_TIMEOUT(crossings(), 2, 30'000);
    const QString parent = QString::number(host.processId());
    QFile children("/proc/" + parent + "/task/" + parent + "/children");
    QVERIFY(children.open(QFile::ReadOnly));
    QCOMPARE(QByteArray::number(shared->control().owner), children.readAll().trimmed());
    host.closeWriteChannel();
    QVERIFY(host.waitForFinished());
}

void OwnerTests::anotherProcessIsCountedOnce()
{
    shared->control().owner = 1;
    run({"open", "call", "close", "open", "close", "open"});
    QCOMPARE(shared->control().forwardingProcesses.load(), 1U);
    run({"open", "close", "fork", "open", "close", "open"});
    QCOMPARE(shared->control().forwardingProcesses.load(), 3U);
    QCOMPARE(crossings(), 0);
}

void OwnerTests::goesOnInAnotherImage()
{
    run({"open", "call", "exec", "open", "call", "exec", "exec", "open", "call"});
    QCOMPARE(crossings(), 6);
    QCOMPARE(shared->control().forwardingProcesses.load(), 0U);
}

void OwnerTests::leavesNoHolesBehindInAnotherImage()
{
    QProcess host;
    start(host, {"open", "call", "wait", "exec", "open", "call", "wait"});
    QTRY_COMPARE_WITH_TIMEOUT(crossings(), 2, 30'000);
    // What its threads leave that are within a callback.
    shared->control().reserved += (std::uint64_t{1} << 32) + 3;
    ring::Taken record;
    QCOMPARE(consumer->take(record, false), Consumer::Step::Hole);
    host.closeWriteChannel();
    QVERIFY(host.waitForFinished());
    QCOMPARE(consumer->take(record, false), Consumer::Step::Record);
    QCOMPARE(record.lost, std::uint64_t{1});
    QCOMPARE(crossings(), 3);
    // Those of the new image are waited for.
    shared->control().reserved += (std::uint64_t{1} << 32) + 3;
    QCOMPARE(consumer->take(record, false), Consumer::Step::Hole);
}

void OwnerTests::leavesNoMemoryToChildren()
{
    run({"open", "maps", "fork", "maps", "close"});
    QCOMPARE(output, QByteArray("1\n0\n"));
}

/// The call that they were forked off in returns in them too.
void OwnerTests::leavesNoCallToChildren()
{
    qputenv("PADSCOPE_DRIVER", FORKING_LIBRARY);
    run({"open", "call"});
    ring::Taken record;
    QCOMPARE(consumer->take(record, false), Consumer::Step::Record);
    QCOMPARE(int{record.kind}, 2);
    QCOMPARE(consumer->take(record, false), Consumer::Step::Record);
    QCOMPARE(int{record.kind}, 3);
    QCOMPARE(record.result, 1);
    QCOMPARE(consumer->take(record, false), Consumer::Step::Empty);
}

void OwnerTests::unloadsTheTapAndKeepsTheLibrary_data()
{
    addColumns<QStringList, unsigned>("steps", "times");
    addRow("it has no handle of its own", QStringList{"open", "close", "open", "close"}, 0U);
    addRow("it has one", QStringList{"own", "open", "close", "open", "close"}, 2U);
    addRow("it ends with both", QStringList{"own", "open", "call"}, 0U);
}

void OwnerTests::unloadsTheTapAndKeepsTheLibrary()
{
    QFETCH(QStringList, steps);
    QFETCH(unsigned, times);
    run(steps);
    QCOMPARE(shared->control().timesPassedBy.load(), times);
}

void OwnerTests::findsNoLibrary()
{
    qputenv("PADSCOPE_DRIVER", "/nowhere/at/all");
    QProcess host;
    start(host, {"open"});
    QVERIFY(host.waitForFinished());
    QCOMPARE(shared->control().failedOpenings.load(), 1U);
    QCOMPARE(shared->control().owner.load(), 0);
}

PADSCOPE_TESTS(OwnerTests);
#include "tst_owner.moc"
