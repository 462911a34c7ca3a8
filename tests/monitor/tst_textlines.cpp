#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include "monitor/monitorview.h"
#include "support/tests.h"

namespace {

QByteArray text(const QByteArray &characters, char type = '\x32')
{
    return QByteArray("\x00", 1) + type + characters;
}

} // namespace

/// How the board's text stream becomes rows.
class TextLines : public QObject
{
    Q_OBJECT

private slots:
    void lineEndsAtTheLineFeed_data();
    void lineEndsAtTheLineFeed();
    void lineTooSoonIsThrownAway_data();
    void lineTooSoonIsThrownAway();
    void timeCountsFromAnyReportShown();
    void firstOfTwoLinesInAPacket();
    void lineOfSeveralPackets();
    void longLine();
    void lateEndOfALineIsThrownAwayWhole();
    void textBehindALineWaits();
    void completedLineTakesThePreviousPacketsPlace();
    void everyCharacter();
    void restIsShownByTheTimer();
    void timerRestartsWithEachPacket();
    void lineEndStopsTheTimer();
    void otherReportLeavesTheTimer();
    void packetWithoutText_data();
    void packetWithoutText();
    void packetWithoutTextRestartsAPendingTimer();
    void restIsNotCheckedForText();
    void textThatComesAsARowIsAdded();
};

void TextLines::lineEndsAtTheLineFeed_data()
{
    addColumns<QByteArray, QString>("report", "row");
    addRow("type 50", text("AB\r\n"), "AB..");
    addRow("type 119", text("AB\r\n", '\x77'), "AB..");
    addRow("line feed alone", text("\n"), ".");
    addRow("byte 11 of sub-type 11 is text", hex("3a 77 0b 41 0a"), ".A.");
    addRow("byte 12 of type 50 is text", hex("3a 32 0c 41 0a"), ".A.");
    addRow("markup", text("<b>x</b>&amp;\n"), "<b>x</b>&amp;.");
    addRow("placeholders", text("%1 %2 100%\n"), "%1 %2 100%.");
    addRow("nothing that prints", text(QByteArray("\0\t\x1b\x7f\xe4\n", 6)), "......");
}

void TextLines::lineEndsAtTheLineFeed()
{
    QFETCH(QByteArray, report);
    QFETCH(QString, row);
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(report, noon.addMSecs(31));
    QCOMPARE(monitorView.rows(), QStringList{row});
    QCOMPARE(monitorView.label(), row);
    QVERIFY(monitorView.view->pendingText.isNull());
    QVERIFY(!monitorView.view->pendingTextTimer.isActive());
}

void TextLines::lineTooSoonIsThrownAway_data()
{
    addColumns<QTime, QTime, bool>("previous", "time", "shown");
    addRow("same time", noon, noon, false);
    addRow("1 ms", noon, noon.addMSecs(1), false);
    addRow("20 ms", noon, noon.addMSecs(20), false);
    addRow("30 ms", noon, noon.addMSecs(30), false);
    addRow("31 ms", noon, noon.addMSecs(31), true);
    addRow("an hour", noon, noon.addSecs(3600), true);
    addRow("1 ms back", noon, noon.addMSecs(-1), false);
    addRow("over midnight", QTime(23, 59, 59, 900), QTime(0, 0, 0, 100), false);
    addRow("no time of its own", noon, QTime(), false);
}

void TextLines::lineTooSoonIsThrownAway()
{
    QFETCH(QTime, previous);
    QFETCH(QTime, time);
    QFETCH(bool, shown);
    MonitorView monitorView;
    monitorView.send(text(""), previous);
    monitorView.send(text("AB\r\n", '\x77'), time);
    QCOMPARE(monitorView.rows(), shown ? QStringList{"AB.."} : QStringList());
    QVERIFY(monitorView.view->pendingText.isNull());
    QVERIFY(!monitorView.view->pendingTextTimer.isActive());
    // Shown or not, the report is now the one before the next.
    QCOMPARE(monitorView.view->previousPacket->time, time);
}

void TextLines::timeCountsFromAnyReportShown()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(hex("09 a2 00 0000 0100 0200"), noon.addMSecs(100));
    monitorView.send(text("late\n"), noon.addMSecs(130));
    QCOMPARE(monitorView.rows(),
             QStringList{"Q:              1     Button:            2 Pen:        Teacher"});
    monitorView.send(text("in time\n"), noon.addMSecs(161));
    QCOMPARE(monitorView.rows().size(), 2);
    QCOMPARE(monitorView.rows().last(), QString("in time."));
}

void TextLines::firstOfTwoLinesInAPacket()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(text("one\ntwo\n"), noon.addMSecs(31));
    QCOMPARE(monitorView.rows(), QStringList{"one."});
    QVERIFY(monitorView.view->pendingText.isNull());
    monitorView.send(text("three\nfour\n"), noon.addMSecs(61));
    QCOMPARE(monitorView.rows(), QStringList{"one."});
}

void TextLines::lineOfSeveralPackets()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(text("one "), noon.addMSecs(100));
    monitorView.send(text("line ", '\x77'), noon.addMSecs(200));
    QCOMPARE(monitorView.rows(), QStringList());
    QCOMPARE(monitorView.view->pendingText, QString("one line "));
    monitorView.send(text("only\n"), noon.addMSecs(300));
    QCOMPARE(monitorView.rows(), QStringList{"one line only."});
}

void TextLines::longLine()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    for (int part = 1; part <= 50; ++part)
        monitorView.send(text(QByteArray(200, static_cast<char>('0' + part % 10))), noon.addMSecs(part));
    monitorView.send(text("\n"), noon.addSecs(1));
    QCOMPARE(monitorView.rows().size(), 1);
    QCOMPARE(monitorView.rows().constFirst().size(), 10001);
    QCOMPARE(monitorView.rows().constFirst().left(202), QString(200, '1') + "22");
    QCOMPARE(monitorView.rows().constFirst().right(3), QString("00."));
}

void TextLines::lateEndOfALineIsThrownAwayWhole()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(text("begin "), noon.addMSecs(100));
    monitorView.send(text("end\nnext"), noon.addMSecs(130));
    QCOMPARE(monitorView.rows(), QStringList());
    QCOMPARE(monitorView.view->pendingText, QString("next"));
}

void TextLines::textBehindALineWaits()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(text("one\nrest"), noon.addMSecs(31));
    QCOMPARE(monitorView.rows(), QStringList{"one."});
    QCOMPARE(monitorView.view->pendingText, QString("rest"));
    QVERIFY(monitorView.view->pendingTextTimer.isActive());
}

void TextLines::completedLineTakesThePreviousPacketsPlace()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    monitorView.send(text("one\n"), noon.addMSecs(31));
    QCOMPARE(monitorView.view->previousPacket->data, text("one\n"));
    QCOMPARE(monitorView.view->previousPacket->time, noon.addMSecs(31));
    QCOMPARE(monitorView.view->previousPacket->device, 1001);
}

void TextLines::everyCharacter()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    QByteArray characters;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != 10)
            characters += static_cast<char>(byte);
    }
    monitorView.send(text(characters), noon.addMSecs(31));
    // 0x00 to 0x1f without the line feed, the printable ones, and 0x7f to 0xff.
    QCOMPARE(monitorView.view->pendingText, QString(31, '.') +
                                                " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                "[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~" +
                                                QString(129, '.'));
}

void TextLines::restIsShownByTheTimer()
{
    MonitorView monitorView;
    monitorView.send(text("rest"), noon);
    QVERIFY(monitorView.view->pendingTextTimer.isActive());
    QCOMPARE(monitorView.view->pendingTextTimer.interval(), 300);
    QCOMPARE(monitorView.rows(), QStringList());
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTRY_COMPARE(monitorView.rows(), QStringList{"rest"});
    // A coarse timer may be 5 % early.
    QVERIFY(sinceStart.elapsed() >= 280);
    QCOMPARE(monitorView.label(), QString("rest"));
    QVERIFY(monitorView.view->pendingText.isNull());
    QVERIFY(!monitorView.view->pendingTextTimer.isActive());
}

void TextLines::timerRestartsWithEachPacket()
{
    MonitorView monitorView;
    monitorView.send(text("one "), noon);
    // No event is handled meanwhile, so the timer can't end however slow the machine is.
    QThread::msleep(150);
    const int before = monitorView.view->pendingTextTimer.remainingTime();
    QVERIFY(before <= 200);
    monitorView.send(text("two"), noon);
    QVERIFY(monitorView.view->pendingTextTimer.remainingTime() > before);
    QCOMPARE(monitorView.rows(), QStringList());
    QTRY_COMPARE(monitorView.rows(), QStringList{"one two"});
}

void TextLines::lineEndStopsTheTimer()
{
    MonitorView monitorView;
    monitorView.send(text("one "), noon);
    QVERIFY(monitorView.view->pendingTextTimer.isActive());
    monitorView.send(text("line\n"), noon.addMSecs(31));
    QVERIFY(!monitorView.view->pendingTextTimer.isActive());
    QCOMPARE(monitorView.rows(), QStringList{"one line."});
}

void TextLines::otherReportLeavesTheTimer()
{
    MonitorView monitorView;
    monitorView.send(text("one "), noon);
    monitorView.send(hex("34 77 0c 64 00"), noon);
    QCOMPARE(monitorView.view->pendingText, QString("one "));
    QVERIFY(monitorView.view->pendingTextTimer.isActive());
    QTRY_COMPARE(monitorView.rows(), (QStringList{"Raw ADC: 100Voltage: 0.488V", "one "}));
}

void TextLines::packetWithoutText_data()
{
    QTest::addColumn<QByteArray>("report");
    addRow("type 50", hex("02 32"));
    addRow("type 119", hex("02 77"));
    addRow("type 119, length byte of a voltage", hex("34 77"));
}

void TextLines::packetWithoutText()
{
    QFETCH(QByteArray, report);
    MonitorView monitorView;
    monitorView.send(report, noon);
    QCOMPARE(monitorView.rows(), QStringList());
    QVERIFY(monitorView.view->pendingText.isNull());
    QVERIFY(!monitorView.view->pendingTextTimer.isActive());
    QCOMPARE(monitorView.view->previousPacket->data, report);
}

void TextLines::packetWithoutTextRestartsAPendingTimer()
{
    MonitorView monitorView;
    monitorView.send(text("rest"), noon);
    QThread::msleep(150);
    const int before = monitorView.view->pendingTextTimer.remainingTime();
    monitorView.send(text(""), noon);
    QVERIFY(monitorView.view->pendingTextTimer.remainingTime() > before);
    QCOMPARE(monitorView.view->pendingText, QString("rest"));
    QTRY_COMPARE(monitorView.rows(), QStringList{"rest"});
}

void TextLines::restIsNotCheckedForText()
{
    MonitorView monitorView;
    monitorView.view->OnTimerAddRest();
    QCOMPARE(monitorView.rows(), QStringList{""});
}

// A slot of the host's runs the event loop as the row of a line, then that of a rest, is inserted.
void TextLines::textThatComesAsARowIsAdded()
{
    MonitorView monitorView;
    monitorView.send(text(""), noon);
    int row = 0;
    connect(monitorView.view->model, &QStandardItemModel::rowsInserted, [&] {
        if (++row % 2 == 1)
            monitorView.send(text("nested\n"), noon.addSecs(2 * row));
    });
    monitorView.send(text("outer\n"), noon.addSecs(1));
    monitorView.send(text("rest"), noon.addSecs(4));
    monitorView.view->OnTimerAddRest();
    QVERIFY(monitorView.rows().contains("outer."));
    QVERIFY(monitorView.rows().contains("rest"));
}

PADSCOPE_TESTS(TextLines);
#include "tst_textlines.moc"
