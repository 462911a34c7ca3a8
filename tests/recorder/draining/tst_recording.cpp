#include <csignal>
#include <QTemporaryDir>
#include <sys/resource.h>

#include "recordedrun.h"
#include "recording.h"
#include "sharedring.h"
#include "support/tests.h"

namespace {

/// Sets how long a file may get.
void limitFiles(rlim_t bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
}

ring::Taken reportOf(std::int32_t board, std::uint64_t crossing)
{
    ring::Taken taken;
    taken.kind = 1;
    taken.flags = 1;
    taken.board = board;
    taken.crossing = crossing;
    taken.payload = "report";
    return taken;
}

} // namespace

class RecordingTests : public QObject
{
    Q_OBJECT

private slots:
    void aBoardGetsItsInterfaceWhenThereIsRoom();
    void clocksAtAnotherMoment();
};

/// There was none when its first report came.
void RecordingTests::aBoardGetsItsInterfaceWhenThereIsRoom()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
    const recorder::SharedRing shared(64 * 1024, 1);
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, recorder::Clocks::now());
    void (*const handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    limitFiles(1);
    recording.write(reportOf(7, 0));
    recording.flush();
    limitFiles(RLIM_INFINITY);
    std::signal(SIGXFSZ, handler);
    recording.write(reportOf(7, 1));
    recording.write(reportOf(8, 2));
    recording.writeEnd({}, 0, recorder::Clocks::now(), shared.control());
    const CaptureFacts facts = factsOf(path);
    QVERIFY(facts.isWhole);
    QCOMPARE(facts.interfaces, (QStringList{"driver", "board 7", "board 8"}));
    QCOMPARE(facts.reports, (std::map<std::int32_t, std::uint64_t>{{7, 1}, {8, 1}}));
    QCOMPARE(facts.lost, std::uint64_t{2}); // the board was not told either
}

void RecordingTests::clocksAtAnotherMoment()
{
    const recorder::Clocks clocks = recorder::Clocks{5000, 7000, 6000, 3600}.at(3500);
    QCOMPARE(clocks.monotonicNs, std::uint64_t{3500});
    QCOMPARE(clocks.realNs, std::uint64_t{5500});
    QCOMPARE(clocks.bootNs, std::uint64_t{4500});
    QCOMPARE(clocks.localOffsetSeconds, 3600);
}

PADSCOPE_TESTS(RecordingTests);
#include "tst_recording.moc"
