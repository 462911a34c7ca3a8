#include <fcntl.h>
#include <memory>
#include <QDir>
#include <QTemporaryDir>
#include <unistd.h>

#include "filelimit.h"
#include "pcapngreader.h"
#include "producer.h"
#include "recordedrun.h"
#include "recording.h"
#include "recordreader.h"
#include "slices.h"
#include "support/tests.h"

using recorder::Clocks;
using recorder::Trigger;

namespace {

constexpr Clocks start{5'000'000'000, 1'700'000'000'000'000'000, 9'000'000'000, 3600};
constexpr std::uint64_t nsPerMs = 1'000'000;

std::uint64_t monotonicAt(std::uint64_t ms)
{
    return start.monotonicNs + ms * nsPerMs;
}

ring::Taken reportAt(std::uint64_t ms, const std::string &payload = "report")
{
    ring::Taken taken;
    taken.kind = 1;
    taken.flags = capture::BoardIsValid;
    taken.board = 7;
    taken.clockNs = monotonicAt(ms);
    taken.payload = payload;
    taken.originalLength = static_cast<std::uint32_t>(payload.size());
    return taken;
}

/// By a thread of its own.
ring::Taken callAt(std::uint64_t ms, std::uint32_t crossing)
{
    ring::Taken taken;
    taken.kind = 2;
    taken.call = 13;
    taken.crossing = crossing;
    taken.thread = crossing;
    taken.clockNs = monotonicAt(ms);
    return taken;
}

ring::Taken returnAt(std::uint64_t ms, std::uint32_t call)
{
    ring::Taken taken = callAt(ms, call);
    taken.kind = 3;
    taken.crossing = 100 + call;
    taken.link = call;
    return taken;
}

/// A file's packets: sequence, milliseconds since the recording's start, kind, and what was lost or is told.
QStringList packetsOf(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    QStringList packets;
    while (reader.next() == capture::pcapng::Event::Packet) {
        const capture::Record &record = reader.record();
        // What follows in the same ns is a few ns later.
        const std::uint64_t ms = (record.timeNs + 100 - start.realNs) / nsPerMs;
        QString line =
            QString("%1 %2 %3").arg(record.header.sequence).arg(ms).arg(nameOf(record.header.kindOf()));
        if (record.header.kindOf() == capture::Kind::Mark || record.header.kindOf() == capture::Kind::Report)
            line += ' ' + QString::fromStdString(std::string(record.payload.text()));
        if (record.header.kindOf() == capture::Kind::Return)
            line += QString(" of %1").arg(record.header.link);
        if (record.header.lost > 0)
            line += QString(" lost %1").arg(record.header.lost);
        packets += line;
    }
    close(file);
    return packets;
}

/// Of the first packet, which is one.
capture::Status statusIn(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    reader.next();
    const auto status = capture::statusOf(reader.record().payload);
    close(file);
    return status.value_or(capture::Status());
}

QStringList countsOf(const std::vector<capture::BoardCounts> &boards)
{
    QStringList lines;
    for (const capture::BoardCounts &counts : boards)
        lines += QString("%1: %2 delivered, %3 recorded, %4 lost")
                     .arg(counts.board)
                     .arg(counts.delivered)
                     .arg(counts.recorded)
                     .arg(counts.lost);
    return lines;
}

} // namespace

/// Of a recording only what lies around events is written.
class SlicesTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void fromBeforeToBehind();
    void fromTheStartOfAYoungRecording();
    void boardsThatAreKnown();
    void lossesAreThoseWithin();
    void lossesOfEachBoard();
    void returnsOfCallsThatAreLeftOut();
    void aSecondEventExtends();
    void aLaterEventGetsAFileOfItsOwn();
    void time();
    void theEndOfTheRecording();
    void memory();
    void aFullDisk();
    void noRoomForAFile();
    void statistics();
    void nothingHappens();

private:
    void begin(std::uint64_t beforeMs, std::uint64_t afterMs, const std::string &note = {},
               std::size_t maxBytes = recorder::defaultKeptBytes);
    void mark(std::uint64_t ms) { recording->writeMark({monotonicAt(ms), "now"}); }
    void report(std::uint64_t ms, const std::string &payload = "report")
    {
        recording->write(reportAt(ms, payload));
    }
    QStringList files() const { return QDir(folder->path()).entryList(QDir::Files, QDir::Name); }
    QString path(const char *name = "x.pcapng") const { return folder->filePath(name); }
    /// The ring has counted them so far.
    void countLost(std::int32_t board, std::uint64_t count)
    {
        ring::slotOf(*control, board).lost = count;
    }
    void reportBehind(std::uint32_t lost, std::uint64_t ms)
    {
        ring::Taken taken = reportAt(ms);
        taken.lost = lost;
        recording->write(taken);
        recording->flush();
    }
    QByteArray checked(const char *name = "x.pcapng") const
    {
        return outputOf(PADSCOPE_FILE, {"check", path(name)});
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<recorder::Slices> slices;
    std::unique_ptr<recorder::Recording> recording;
    std::unique_ptr<ring::Control> control;
};

void SlicesTests::init()
{
    recording.reset();
    slices.reset();
    control = std::make_unique<ring::Control>();
    folder = std::make_unique<QTemporaryDir>();
}

/// Marks are the events.
void SlicesTests::begin(std::uint64_t beforeMs, std::uint64_t afterMs, const std::string &note,
                        std::size_t maxBytes)
{
    const auto isMark = [](const capture::Header &header, capture::ByteView) {
        return header.kindOf() == capture::Kind::Mark;
    };
    slices = std::make_unique<recorder::Slices>(
        path().toStdString(), Trigger{beforeMs * nsPerMs, afterMs * nsPerMs, isMark, maxBytes},
        !note.empty(), *control);
    recording = std::make_unique<recorder::Recording>(*slices, 1, start);
    recording->writeStatus(start, *control);
    if (!note.empty())
        recording->writeMark({start.monotonicNs, note});
}

void SlicesTests::fromBeforeToBehind()
{
    begin(100, 50, "note");
    report(100, "a");
    report(299, "b");
    report(300, "c");
    QCOMPARE(files(), QStringList());
    mark(400);
    report(450, "d");
    report(451, "e");
    recording->flush();
    slices->close();
    // Status, note and board have the numbers right before that of "c", which is 5.
    QCOMPARE(packetsOf(path()),
             (QStringList{"2 300 status", "3 300 mark note", "4 300 board", "5 300 report c",
                          "6 400 mark now", "7 450 report d", "8 450 end"}));
    QCOMPARE(checked(), QByteArray("0\n"));
    const capture::Status status = statusIn(path());
    // Three packets lie between it and the 300 ms, a ns each.
    QCOMPARE(status.monotonicNs, std::uint64_t{5'299'999'997});
    QCOMPARE(status.realNs, std::uint64_t{1'700'000'000'299'999'997});
    QCOMPARE(status.bootNs, std::uint64_t{9'299'999'997});
    QCOMPARE(status.localOffsetSeconds, 3600);
    QCOMPARE(status.boards.size(), std::size_t{1});
    QCOMPARE(status.boards.front().recorded, std::uint64_t{2});
    QCOMPARE(slices->remarks(), std::vector<std::string>());
}

void SlicesTests::fromTheStartOfAYoungRecording()
{
    begin(1000, 50, "note");
    report(100, "a");
    mark(400);
    recording->flush();
    slices->close();
    QCOMPARE(packetsOf(path()),
             (QStringList{"0 0 status", "1 0 mark note", "2 100 board", "3 100 report a", "4 400 mark now"}));
    // Nobody has said that it is over.
    QCOMPARE(checked(), "3\npadscope: " + path().toUtf8() + ": session 00000001: no clean end\n");
}

/// One that has gone is not told.
void SlicesTests::boardsThatAreKnown()
{
    begin(100, 50);
    report(10);
    ring::Taken other = reportAt(20);
    other.board = 8;
    recording->write(other);
    ring::Taken call = reportAt(30, {});
    call.kind = 2;
    call.flags = 0;
    call.call = 9; // the count
    call.crossing = 2;
    recording->write(call);
    call.kind = 3;
    call.clockNs = monotonicAt(40);
    call.crossing = 3;
    call.link = 2;
    call.result = 0; // nothing is left
    recording->write(call);
    other.clockNs = monotonicAt(50);
    recording->write(other);
    mark(400);
    recording->flush();
    recording->passTime(monotonicAt(450));
    QCOMPARE(packetsOf(path()),
             (QStringList{"9 300 status", "10 300 board", "11 400 mark now", "12 450 end"}));
    QCOMPARE(factsOf(path()).interfaces, (QStringList{"driver", "board 7", "board 8"}));
    QCOMPARE(checked(), QByteArray("0\n"));
}

/// What is not kept is not lost.
void SlicesTests::lossesAreThoseWithin()
{
    begin(100, 50);
    ring::Taken taken = reportAt(10);
    taken.lost = 5;
    recording->write(taken);
    report(20);
    taken = reportAt(310, "behind two");
    taken.lost = 2;
    recording->write(taken);
    mark(400);
    recording->flush();
    recording->passTime(monotonicAt(460));
    // 0 status, 1 to 5 lost, 6 board, 7 and 8 reports, 9 and 10 lost
    QCOMPARE(packetsOf(path()), (QStringList{"7 300 status", "8 300 board", "11 310 report behind two lost 2",
                                             "12 400 mark now", "13 450 end"}));
    QCOMPARE(factsOf(path()).lost, std::uint64_t{2});
    QCOMPARE(checked(), "3\npadscope: " + path().toUtf8() + ": session 00000001: 2 lost\n");
}

/// The ring's counts are ahead of the packets, and tell in which proportion the boards lose.
void SlicesTests::lossesOfEachBoard()
{
    begin(100, 50);
    report(10);
    countLost(7, 3);
    reportBehind(3, 20);
    countLost(7, 3 + 40);
    countLost(8, 20);
    reportBehind(6, 310); // 4 of the 40, and 2 of the 20
    recording->writeStatus(start.at(monotonicAt(390)), *control);
    mark(400);
    reportBehind(54, 460);
    recording->flush();
    QCOMPARE(countsOf(statusIn(path()).boards), QStringList{"7: 5 delivered, 2 recorded, 3 lost"});
    QCOMPARE(countsOf(factsOf(path()).end->boards),
             (QStringList{"7: 10 delivered, 3 recorded, 7 lost", "8: 2 delivered, 0 recorded, 2 lost"}));
    mark(600);
    recording->flush();
    recording->passTime(monotonicAt(650));
    QCOMPARE(countsOf(factsOf(path("x-2.pcapng")).end->boards),
             (QStringList{"7: 47 delivered, 4 recorded, 43 lost", "8: 20 delivered, 0 recorded, 20 lost"}));
    QCOMPARE(checked("x-2.pcapng"), QByteArray("0\n"));
}

/// Made-up packets have their sequences.
void SlicesTests::returnsOfCallsThatAreLeftOut()
{
    begin(100, 50);
    report(10);
    recording->write(callAt(20, 2));
    recording->write(callAt(30, 3));
    recording->write(callAt(350, 4));
    recording->write(returnAt(360, 4));
    recording->write(returnAt(370, 2));
    mark(400);
    recording->write(returnAt(410, 3));
    recording->flush();
    recording->passTime(monotonicAt(450));
    // The calls have the sequences 3, 4 and 5.
    QCOMPARE(packetsOf(path()), (QStringList{"3 300 status", "4 300 board", "5 350 call", "6 360 return of 5",
                                             "7 370 return of 4294967295", "8 400 mark now",
                                             "9 410 return of 4294967295", "10 450 end"}));
    QCOMPARE(checked(), QByteArray("0\n"));
}

void SlicesTests::aSecondEventExtends()
{
    begin(0, 50);
    report(10, "a");
    mark(100);
    mark(140);
    report(190, "b");
    recording->flush();
    recording->passTime(monotonicAt(200));
    QCOMPARE(packetsOf(path()), (QStringList{"1 100 status", "2 100 board", "3 100 mark now",
                                             "4 140 mark now", "5 190 report b", "6 190 end"}));
    QCOMPARE(files(), QStringList{"x.pcapng"});
}

/// Each has all that lies before its event, also what stands in the one before.
void SlicesTests::aLaterEventGetsAFileOfItsOwn()
{
    begin(100, 50);
    report(10, "a");
    mark(20);
    mark(100);
    QVERIFY(QFile(path("x-2.pcapng")).open(QFile::WriteOnly)); // somebody else's
    mark(300);
    recording->flush();
    recording->passTime(monotonicAt(400));
    QCOMPARE(files(), (QStringList{"x-2.pcapng", "x-3.pcapng", "x-4.pcapng", "x.pcapng"}));
    QCOMPARE(packetsOf(path()),
             (QStringList{"0 0 status", "1 10 board", "2 10 report a", "3 20 mark now", "4 70 end"}));
    QCOMPARE(packetsOf(path("x-3.pcapng")), (QStringList{"0 0 status", "1 10 board", "2 10 report a",
                                                         "3 20 mark now", "4 100 mark now", "5 150 end"}));
    QCOMPARE(packetsOf(path("x-4.pcapng")),
             (QStringList{"3 200 status", "4 200 board", "5 300 mark now", "6 350 end"}));
    QCOMPARE(QFile(path("x-2.pcapng")).size(), qint64{0});
    for (const char *name : {"x.pcapng", "x-3.pcapng", "x-4.pcapng"})
        QCOMPARE(checked(name), QByteArray("0\n"));
    QCOMPARE(slices->remarks(), (std::vector<std::string>{"3 files were written, the last one is " +
                                                          path("x-4.pcapng").toStdString()}));
}

/// A file ends in time where nothing crosses.
void SlicesTests::time()
{
    begin(100, 50);
    mark(100);
    recording->flush();
    recording->passTime(monotonicAt(149));
    QCOMPARE(packetsOf(path()).size(), 2);
    recording->passTime(monotonicAt(150));
    QCOMPARE(packetsOf(path()), (QStringList{"0 0 status", "1 100 mark now", "2 150 end"}));
}

/// It is the file's, with its totals.
void SlicesTests::theEndOfTheRecording()
{
    begin(100, 50);
    report(10, "a");
    mark(400);
    recording->writeEnd({capture::EndReason::Signal, 11, {}, 0, {}}, 0, start.at(monotonicAt(420)), *control);
    slices->close();
    QCOMPARE(packetsOf(path()), (QStringList{"1 300 status", "2 300 board", "3 400 mark now", "4 420 end"}));
    QCOMPARE(factsOf(path()).end->value, 11);
    QCOMPARE(checked(), QByteArray("0\n"));
}

void SlicesTests::memory()
{
    begin(1000, 50, {}, 5 * 136); // 88 of a block, and 48 to keep it
    for (std::uint64_t i = 1; i <= 20; ++i)
        report(10 * i, std::to_string(i));
    mark(210);
    recording->flush();
    recording->passTime(monotonicAt(300));
    const QStringList packets = packetsOf(path());
    QCOMPARE(packets.first(), QString("16 170 status"));
    QCOMPARE(packets.mid(1, 3), (QStringList{"17 170 board", "18 170 report 17", "19 180 report 18"}));
    QCOMPARE(slices->remarks(),
             std::vector<std::string>{"files that begin too late, since memory held no more: 1"});
    QCOMPARE(checked(), QByteArray("0\n"));
}

void SlicesTests::aFullDisk()
{
    begin(100, 50);
    {
        const FileLimit limit(400);
        mark(100);
        recording->flush();
        for (std::uint64_t ms = 110; ms < 160; ms += 10)
            report(ms);
        recording->flush();
    }
    QVERIFY(factsOf(path()).isWhole);
    report(170);
    mark(400);
    recording->flush();
    recording->passTime(monotonicAt(500));
    QCOMPARE(slices->error(), std::string("File too large"));
    QCOMPARE(slices->path(), path().toStdString());
    // The next event is kept whole.
    QCOMPARE(checked("x-2.pcapng"), QByteArray("0\n"));
}

void SlicesTests::noRoomForAFile()
{
    const recorder::Slices elsewhere("/no-such-folder/x.pcapng", {}, false, *control);
    QCOMPARE(elsewhere.error(), std::string("No such file or directory"));
    QCOMPARE(elsewhere.path(), std::string("/no-such-folder/x.pcapng"));
    QVERIFY(QFile(path()).open(QFile::WriteOnly));
    const recorder::Slices there(path().toStdString(), {}, false, *control);
    QCOMPARE(there.error(), std::string("File exists"));
}

/// Of the file, and not of the recording.
void SlicesTests::statistics()
{
    begin(100, 50);
    report(10);
    report(310);
    report(320);
    mark(400);
    recording->flush();
    recording->passTime(monotonicAt(500));
    const QByteArray told =
        outputOf("sh", {"-c", "tail -c 152 $0 | od -An -v -tu4 -w4 | tr -d ' ' | tr '\\n' ' '", path()});
    // Two blocks of 76 bytes; the counts received are 3 of the library (status, mark, end) and 3 of the
    // board.
    QVERIFY2(told.startsWith("0\n5 76 0 "), told);
    const QList<QByteArray> numbers = told.mid(2).split(' ');
    QCOMPARE(numbers.at(19), QByteArray("5"));
    QCOMPARE(numbers.at(12), QByteArray("3"));
    QCOMPARE(numbers.at(19 + 12), QByteArray("3"));
}

void SlicesTests::nothingHappens()
{
    begin(100, 50, "a note is no event");
    report(10);
    recording->writeEnd({}, 0, start.at(monotonicAt(420)), *control);
    slices->close();
    QCOMPARE(files(), QStringList());
    QCOMPARE(slices->error(), std::string());
    QCOMPARE(slices->remarks(),
             std::vector<std::string>{"nothing happened that --on names: no file was written"});
}

PADSCOPE_TESTS(SlicesTests);
#include "tst_slices.moc"
