#include <csignal>
#include <fcntl.h>
#include <memory>
#include <QTemporaryDir>
#include <sys/resource.h>
#include <unistd.h>

#include "capturefile.h"
#include "filelimit.h"
#include "recordedrun.h"
#include "recording.h"
#include "recordreader.h"
#include "support/tests.h"

using recorder::Clocks;

namespace {

constexpr Clocks start{5'000, 1'700'000'000'000'000'000, 9'000, 0};

ring::Taken takenAt(std::uint64_t crossing, capture::Kind kind)
{
    ring::Taken taken;
    taken.kind = static_cast<std::uint8_t>(kind);
    taken.crossing = crossing;
    taken.clockNs = start.monotonicNs + 1000 * crossing;
    return taken;
}

ring::Taken reportAt(std::uint64_t crossing)
{
    ring::Taken taken = takenAt(crossing, capture::Kind::Report);
    taken.flags = capture::BoardIsValid;
    taken.board = 7;
    taken.payload = "12345678";
    return taken;
}

/// "report 3 board 7 lost 2": kind, sequence, interface, and what was lost before it.
QStringList packetsOf(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    QStringList packets;
    while (reader.next() == capture::pcapng::Event::Packet) {
        const capture::Record &record = reader.record();
        const std::string &interface = reader.file().interfaces().at(reader.file().packet().interface).name;
        QString line = QString("%1 %2 %3")
                           .arg(capture::nameOf(record.header.kindOf()))
                           .arg(record.header.sequence)
                           .arg(QString::fromStdString(interface));
        if (record.header.lost != 0 || record.dropCount != 0)
            line += QString(" lost %1 %2").arg(record.header.lost).arg(record.dropCount);
        if (record.header.kindOf() == capture::Kind::Return)
            line += QString(" of %1").arg(record.header.link);
        packets += line;
    }
    close(file);
    return packets;
}

} // namespace

/// Blocks are written in pieces. What does not fit is lost, and counted.
class CollectingTests : public QObject
{
    Q_OBJECT

private slots:
    void whatDoesNotFitIsALoss();
    void aBoardIsToldAgain();
    void theReturnOfALostCallSaysSo();

private:
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
    const std::unique_ptr<ring::Control> control = std::make_unique<ring::Control>();
};

void CollectingTests::whatDoesNotFitIsALoss()
{
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, start);
    recording.write(reportAt(0)); // with the packet that tells of the board
    recording.flush();
    {
        // A block of a report takes 32 + 48 + 12 + 4 bytes: one fits, and a half.
        const FileLimit limit(static_cast<rlim_t>(QFile(path).size()) + 150);
        recording.write(reportAt(1));
        recording.write(reportAt(2));
        recording.write(reportAt(3));
        recording.flush();
        QCOMPARE(file.error(), std::string("File too large"));
        recording.write(reportAt(4));
        recording.write(reportAt(5));
        recording.flush();
    }
    recording.write(reportAt(6));
    recording.writeEnd({}, 3, start.at(start.monotonicNs + 9000), *control);
    QCOMPARE(factsOf(path).end->lost, std::optional<std::uint64_t>(7));
    QCOMPARE(packetsOf(path), (QStringList{"board 0 board 7", "report 1 board 7", "report 2 board 7",
                                           "report 7 board 7 lost 4 4", "end 11 driver lost 3 3"}));
    QCOMPARE(recording.lost(), std::uint64_t{7});
    file.remove();
}

void CollectingTests::aBoardIsToldAgain()
{
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, start);
    {
        const FileLimit limit(static_cast<rlim_t>(QFile(path).size()) + 20);
        recording.write(reportAt(0));
        recording.flush();
    }
    recording.write(reportAt(1));
    recording.write(reportAt(2));
    recording.flush();
    QCOMPARE(packetsOf(path),
             (QStringList{"board 2 board 7 lost 2 2", "report 3 board 7", "report 4 board 7"}));
    file.remove();
}

void CollectingTests::theReturnOfALostCallSaysSo()
{
    recorder::CaptureFile file(path.toStdString());
    recorder::Recording recording(file, 1, start);
    {
        const FileLimit limit(static_cast<rlim_t>(QFile(path).size()) + 20);
        recording.write(takenAt(0, capture::Kind::Call));
        recording.flush();
    }
    recording.write(takenAt(1, capture::Kind::Call));
    ring::Taken inner = takenAt(2, capture::Kind::Return);
    inner.link = 1;
    recording.write(inner);
    ring::Taken outer = takenAt(3, capture::Kind::Return);
    outer.link = 0;
    recording.write(outer);
    recording.flush();
    QCOMPARE(packetsOf(path), (QStringList{"call 1 driver lost 1 1", "return 2 driver of 1",
                                           "return 3 driver of 4294967295"}));
    file.remove();
}

PADSCOPE_TESTS(CollectingTests);
#include "tst_collecting.moc"
