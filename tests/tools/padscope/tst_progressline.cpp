#include <QRegularExpression>

#include "program.h"
#include "support/terminal.h"
#include "support/tests.h"

/// What a long run says on a terminal.
class ProgressLineTests : public QObject
{
    Q_OBJECT

private slots:
    void aPipe();
    void aShortRun();

private:
    const Files files;
};

/// The line comes with a packet, once half a second has gone by, and goes before anything else is said.
void ProgressLineTests::aPipe()
{
    QByteArray packets;
    for (int i = 0; i < 1024; ++i)
        packets += blocks::packet(1, packetBytes(6, 0, 0, 0, 0, "mark"));
    Terminal terminal;
    QProcess process;
    process.setStandardErrorFile(terminal.path());
    process.start(PADSCOPE_PROGRAM, {"stats", "-"});
    process.write(examplecapture::start());
    const auto isShown = [&] {
        process.write(packets);
        return terminal.text().contains(" packets");
    };
    QTRY_VERIFY(isShown());
    process.write(packets.left(8));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    const QRegularExpression expected(
        "^(\r\\d+ packets *)+\r +\rpadscope: standard input: byte \\d+: it ends "
        "within a block\r\n$");
    QVERIFY2(expected.match(terminal.text()).hasMatch(), terminal.text().constData());
}

void ProgressLineTests::aShortRun()
{
    Terminal terminal;
    QProcess process;
    process.setStandardErrorFile(terminal.path());
    process.start(PADSCOPE_PROGRAM, {"stats", files.write("whole", examplecapture::whole())});
    QVERIFY(process.waitForFinished());
    QCOMPARE(terminal.text(), QByteArray());
}

PADSCOPE_TESTS(ProgressLineTests);
#include "tst_progressline.moc"
