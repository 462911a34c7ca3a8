#include <csignal>
#include <fcntl.h>
#include <QTemporaryDir>
#include <sys/resource.h>
#include <unistd.h>

#include "capturefile.h"
#include "producer.h"
#include "recordedrun.h"
#include "recording.h"
#include "recordreader.h"
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
    void boardsWithoutASlotAreCounted();
    void aReportThatIsNotCountedIsInTheEnd();
    void aLengthThatIsALie();
    void aBoardOfAReplay();
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

/// There are 1023 slots.
void RecordingTests::boardsWithoutASlotAreCounted()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
    const recorder::SharedRing shared(64 * 1024, 1);
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, recorder::Clocks::now());
    for (int board = 0; board < 1023; ++board)
        ring::countReport(shared.control(), board, true);
    for (std::uint64_t i = 0; i < 2; ++i) {
        ring::countReport(shared.control(), 5000, false);
        recording.write(reportOf(5000, i));
    }
    recording.writeEnd({}, 1023, recorder::Clocks::now(), shared.control());
    const CaptureFacts facts = factsOf(path);
    QCOMPARE(facts.end->boards.size(), std::size_t{1024});
    const capture::BoardCounts last = facts.end->boards.back();
    QCOMPARE(last.board, 5000);
    QCOMPARE(last.delivered, std::uint64_t{2});
    QCOMPARE(last.recorded, std::uint64_t{2});
    QCOMPARE(last.lost, std::uint64_t{0});
    QCOMPARE(facts.lostAtEnd(), std::uint64_t{1023});
}

/// Its host was killed in between.
void RecordingTests::aReportThatIsNotCountedIsInTheEnd()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
    const recorder::SharedRing shared(64 * 1024, 1);
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, recorder::Clocks::now());
    recording.write(reportOf(7, 0));
    recording.writeEnd({}, 1, recorder::Clocks::now(), shared.control());
    const CaptureFacts facts = factsOf(path);
    QCOMPARE(facts.end->boards.size(), std::size_t{1});
    QCOMPARE(facts.end->boards.front().board, 7);
    QCOMPARE(facts.end->boards.front().delivered, std::uint64_t{1});
    QCOMPARE(facts.end->boards.front().recorded, std::uint64_t{1});
    QCOMPARE(facts.end->lost, std::optional<std::uint64_t>(1));
    // Losses are no faults.
    const QByteArray checked = outputOf(PADSCOPE_FILE, {"check", path});
    QVERIFY2(checked.startsWith("3\n"), checked);
}

/// With the header it would be 24.
void RecordingTests::aLengthThatIsALie()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, recorder::Clocks::now());
    ring::Taken taken = reportOf(7, 0);
    taken.originalLength = 4'294'967'280;
    recording.write(taken);
    recording.flush();
    const int descriptor = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(descriptor);
    QCOMPARE(reader.next(), capture::pcapng::Event::Packet); // the board
    QCOMPARE(reader.next(), capture::pcapng::Event::Packet);
    QCOMPARE(reader.record().payloadLength, 4'294'967'295 - 40);
    close(descriptor);
}

/// It is told of with the flag of the report that tells of it.
void RecordingTests::aBoardOfAReplay()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, recorder::Clocks::now());
    ring::Taken replayed = reportOf(7, 0);
    replayed.flags |= 64;
    recording.write(replayed);
    recording.write(reportOf(8, 1));
    recording.flush();
    const int descriptor = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(descriptor);
    QList<int> flags;
    while (reader.next() == capture::pcapng::Event::Packet)
        flags += reader.record().header.flags;
    close(descriptor);
    QCOMPARE(flags, (QList<int>{65, 65, 1, 1}));
}

PADSCOPE_TESTS(RecordingTests);
#include "tst_recording.moc"
