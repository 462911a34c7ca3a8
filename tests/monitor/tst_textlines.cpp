#include <QElapsedTimer>
#include <QThread>

#include "monitor/monitortest.h"
#include "support/datalines.h"

/// How the board's text stream becomes rows.
class TextLines : public MonitorTest
{
    Q_OBJECT

private slots:
    void stream_data();
    void stream();
    void restIsShownByTheTimer();
    void timerRestartsWithEachPacket_data();
    void timerRestartsWithEachPacket();
    void otherReportLeavesTheTimer();
    void restIsNotCheckedForText();
    void textThatComesAsARowIsAdded();

private:
    QTimer &timer() const { return Inspect::pendingTextTimer(*view); }
    void sendText(const QByteArray &characters, QTime time = noon);
    void verifyPending(const QString &text) const;
};

namespace {

/// \param text with bytes as a backslash and two hexadecimal digits
QByteArray unescaped(const QByteArray &text)
{
    QByteArray bytes;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        bytes += hex(text.mid(i + 1, 2));
        i += 2;
    }
    return bytes;
}

} // namespace

void TextLines::sendText(const QByteArray &characters, QTime time)
{
    send("\x01\x32" + characters, time);
}

void TextLines::verifyPending(const QString &text) const
{
    QCOMPARE(pendingText(), text);
    QCOMPARE(pendingText().isNull(), text.isEmpty());
    QCOMPARE(timer().isActive(), !text.isEmpty());
}

void TextLines::stream_data()
{
    addColumns<QStringList, QStringList, QString>("packets", "rows", "pending");
    for (const QStringList &line : dataLines(TEST_FOLDER "/textlines.txt", 4, 7))
        addRow(qPrintable(line[0]), QStringList(line.mid(3)), line[1].split(" & ", Qt::SkipEmptyParts),
               line[2]);
}

void TextLines::stream()
{
    QFETCH(QStringList, packets);
    QFETCH(QStringList, rows);
    QFETCH(QString, pending);
    for (const QString &packet : qAsConst(packets)) {
        const QString ms = packet.section(' ', 0, 0);
        const QTime time = ms == "none" ? QTime() : noon.addMSecs(ms.toInt());
        const QByteArray bytes =
            hex(packet.section(' ', 1, 1).toLatin1()) + unescaped(packet.section(' ', 2).toLatin1());
        send(bytes, time);
        // Whether its text is shown or not, it is now the report before the next.
        QCOMPARE(previousPacket()->data, bytes);
        QCOMPARE(previousPacket()->time, time);
    }
    QCOMPARE(this->rows(), rows);
    QCOMPARE(lastRow->text(), rows.isEmpty() ? QString() : rows.constLast());
    verifyPending(pending);
}

void TextLines::restIsShownByTheTimer()
{
    sendText("rest");
    QCOMPARE(timer().interval(), 300);
    QCOMPARE(rows(), QStringList());
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTRY_COMPARE(rows(), QStringList{"rest"});
    // A coarse timer may be 5 % early.
    QVERIFY(sinceStart.elapsed() >= 280);
    QCOMPARE(lastRow->text(), QString("rest"));
    verifyPending(QString());
}

void TextLines::timerRestartsWithEachPacket_data()
{
    addColumns<QByteArray, QString>("next", "row");
    addRow("with text", QByteArray("two"), "one two");
    addRow("without text", QByteArray(), "one ");
}

void TextLines::timerRestartsWithEachPacket()
{
    QFETCH(QByteArray, next);
    QFETCH(QString, row);
    sendText("one ");
    // No event is handled meanwhile, so the timer can't end however slow the machine is.
    QThread::msleep(150);
    const int before = timer().remainingTime();
    QVERIFY(before <= 200);
    sendText(next);
    QVERIFY(timer().remainingTime() > before);
    QCOMPARE(rows(), QStringList());
    QTRY_COMPARE(rows(), QStringList{row});
}

void TextLines::otherReportLeavesTheTimer()
{
    sendText("one ");
    send(hex("34 77 0c 64 00"));
    verifyPending("one ");
    QTRY_COMPARE(rows(), (QStringList{"Raw ADC: 100Voltage: 0.488V", "one "}));
}

void TextLines::restIsNotCheckedForText()
{
    view->OnTimerAddRest();
    QCOMPARE(rows(), QStringList{""});
}

// A slot of the host's runs the event loop as the row of a line, then that of a rest, is inserted.
void TextLines::textThatComesAsARowIsAdded()
{
    sendText("");
    int row = 0;
    connect(model, &QStandardItemModel::rowsInserted, [&] {
        if (++row % 2 == 1)
            sendText("nested\n", noon.addSecs(2 * row));
    });
    sendText("outer\n", noon.addSecs(1));
    sendText("rest", noon.addSecs(4));
    view->OnTimerAddRest();
    QVERIFY(rows().contains("outer."));
    QVERIFY(rows().contains("rest"));
}

PADSCOPE_TESTS(TextLines);
#include "tst_textlines.moc"
