#include <vector>

#include <QTest>

#include "monitor/monitorview.h"
#include "support/tests.h"

/// Reports that are shorter than their fields: a missing byte counts as zero.
class ShortReports : public QObject
{
    Q_OBJECT

private slots:
    void everyLengthIsShownAsIfFilledWithZeros_data();
    void everyLengthIsShownAsIfFilledWithZeros();
    void everyTypeAtLengthsZeroToTwo();
};

void ShortReports::everyLengthIsShownAsIfFilledWithZeros_data()
{
    addColumns<QByteArray, int>("header", "fullLength");
    addRow("fine and coarse", QByteArray("28 2f 01"), 40);
    addRow("raw and normalised", QByteArray("28 2f 02"), 40);
    addRow("quality summary", QByteArray("0e 2f 03"), 14);
    addRow("integrators", QByteArray("0a 2f 04"), 10);
    addRow("integrators and normalised", QByteArray("10 2f 05"), 16);
    addRow("quality and counters", QByteArray("19 2f 06"), 25);
    addRow("phase", QByteArray("28 68"), 40);
    addRow("voltage", QByteArray("34 77 0c"), 5);
    addRow("pen identity", QByteArray("09 a2"), 9);
    addRow("dual pen", QByteArray("1a a3"), 26);
    addRow("position", QByteArray("1f a4"), 31);
}

// The row of a short report is the row of the report that does hold the zeros.
void ShortReports::everyLengthIsShownAsIfFilledWithZeros()
{
    QFETCH(QByteArray, header);
    QFETCH(int, fullLength);
    const QByteArray start = hex(header);
    const QByteArray full = start + QByteArray(fullLength - start.size(), '\xab');
    MonitorView monitorView;
    for (int length = start.size(); length <= fullLength; ++length) {
        // A buffer of its own size, so that a sanitizer sees a byte read too far.
        const std::vector<char> report(full.cbegin(), full.cbegin() + length);
        monitorView.send(QByteArray::fromRawData(report.data(), length));
        monitorView.forgetPrevious();
        monitorView.send(full.left(length) + QByteArray(fullLength - length, '\0'));
        monitorView.forgetPrevious();
        const QStringList rows = monitorView.rows();
        QVERIFY(rows.size() >= 2);
        QCOMPARE(rows.at(rows.size() - 2), rows.last());
        QVERIFY(!rows.last().isEmpty());
    }
}

void ShortReports::everyTypeAtLengthsZeroToTwo()
{
    MonitorView monitorView;
    for (int type = 0; type < 256; ++type) {
        const char report[] = {40, static_cast<char>(type)};
        for (int length = 0; length <= 2; ++length) {
            monitorView.send(QByteArray(report, length));
            monitorView.forgetPrevious();
        }
        // Text of two bytes holds no character; everything else makes a row.
        const bool isText = type == 50 || type == 119;
        QCOMPARE(monitorView.rows().size(), isText ? 2 : 3);
        QCOMPARE(monitorView.rows().mid(0, 2), (QStringList{"", "(   28 "}));
        QVERIFY(monitorView.view->pendingText.isEmpty());
        monitorView.view->model->removeRows(0, monitorView.view->model->rowCount());
    }
}

PADSCOPE_TESTS(ShortReports);
#include "tst_shortreports.moc"
