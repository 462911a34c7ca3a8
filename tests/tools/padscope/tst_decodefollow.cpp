#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// `padscope decode --follow` as a process.
class DecodeFollowTests : public QObject
{
    Q_OBJECT

private slots:
    void followsAFileThatGrows();
    void followsEverySession();
    void followsAPipe();
    void followingAPipeEndsWithIt();
    void followingEndsWithItsReader();

private:
    const Files files;
};

/// The file grows in the middle of a block. It ends with the end packet.
void DecodeFollowTests::followsAFileThatGrows()
{
    const QByteArray bytes = whole();
    const int half = bytes.size() / 2;
    const QString path = files.write("grows.pcapng", bytes.left(half));
    QProcess process;
    process.start(PADSCOPE_PROGRAM, {"decode", "--follow", "--kind", "call", path});
    QByteArray printed;
    const auto lineCount = [&] { return (printed += process.readAllStandardOutput()).count('\n'); };
    QTRY_COMPARE_WITH_TIMEOUT(lineCount(), 1, 30'000);
    QFile file(path);
    QVERIFY(file.open(QIODevice::Append));
    file.write(bytes.mid(half));
    file.close();
    QVERIFY(process.waitForFinished());
    QCOMPARE(lineCount(), 2);
    QCOMPARE(process.exitCode(), 0);
}

/// Two recordings one behind the other.
void DecodeFollowTests::followsEverySession()
{
    QByteArray second = whole();
    second.replace(blocks::number(0x5f0c93a1, 4), blocks::number(0x11111111, 4));
    const ProgramRun run = padscope({"decode", "--follow", files.write("two.pcapng", whole() + second)});
    QCOMPARE(run.lines().size(), 22);
    QCOMPARE(run.status, 0);
}

/// What has come is printed while the next is waited for.
void DecodeFollowTests::followsAPipe()
{
    QProcess process;
    process.start(PADSCOPE_PROGRAM, {"decode", "--follow", "-"});
    QByteArray printed;
    const auto lineCount = [&] { return (printed += process.readAllStandardOutput()).count('\n'); };
    process.write(start() + packets()[0] + packets()[1].left(20));
    QTRY_COMPARE_WITH_TIMEOUT(lineCount(), 1, 30'000);
    process.write(packets()[1].mid(20));
    QTRY_COMPARE_WITH_TIMEOUT(lineCount(), 2, 30'000);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 3);
}

void DecodeFollowTests::followingAPipeEndsWithIt()
{
    const ProgramRun run = padscope({"decode", "--follow", "-"}, whole().chopped(1));
    QCOMPARE(run.lines(), examplecapture::textLines().mid(0, 10));
    QCOMPARE(run.status, 3);
}

void DecodeFollowTests::followingEndsWithItsReader()
{
    const QString path = files.write("grows.pcapng", start() + packets()[0]);
    const ProgramRun run =
        runProgram("/bin/sh", {"-c", "\"$0\" decode --follow \"$1\" | head -n 1", PADSCOPE_PROGRAM, path});
    QCOMPARE(run.output, QByteArray("0.000000000  -  status\n"));
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
}

PADSCOPE_TESTS(DecodeFollowTests);
#include "tst_decodefollow.moc"
