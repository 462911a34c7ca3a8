#include "monitor/countingpaintdevice.h"
#include "monitor/monitortest.h"

namespace {

constexpr int million = 1000000;
constexpr int maxPainted = 20000;      // characters
constexpr int maxColumnWidth = 400000; // pixels

int charactersPainted(QWidget *widget)
{
    CountingPaintDevice device;
    widget->render(&device);
    return device.characters();
}

} // namespace

/// A text stream without line ends: everything is kept, and no more is painted than can be seen.
class LongRowTests : public MonitorTest
{
    Q_OBJECT

private slots:
    void longRowIsPaintedInPart();
    void shortRowIsPaintedWhole();
    void streamWithoutLineEnds();
};

void LongRowTests::longRowIsPaintedInPart()
{
    QVERIFY(show());
    view->AddData(QString(million, QLatin1Char('x')), QString(million, QLatin1Char('y')));
    for (QWidget *widget : {static_cast<QWidget *>(lastRow), tree->viewport()}) {
        const int painted = charactersPainted(widget);
        QVERIFY2(painted > 100 && painted < maxPainted, qPrintable(QString::number(painted)));
    }
    const int width = tree->columnWidth(0);
    QVERIFY2(width > 2000 && width < maxColumnWidth, qPrintable(QString::number(width)));
    QVERIFY(lastRow->sizeHint().width() < maxColumnWidth);
    QVERIFY(lastRow->minimumSizeHint().width() < maxColumnWidth);
}

void LongRowTests::shortRowIsPaintedWhole()
{
    QVERIFY(show());
    const int before = charactersPainted(tree->viewport());
    add(QString(200, QLatin1Char('x')));
    QCOMPARE(charactersPainted(lastRow), 200);
    QCOMPARE(charactersPainted(tree->viewport()) - before, 200);
}

void LongRowTests::streamWithoutLineEnds()
{
    QVERIFY(show());
    // Different in each packet, since a repeated one is dropped.
    for (int i = 0; i < 1000; ++i)
        send("\x40\x32" + QByteArray::number(i).rightJustified(1000, 'a'), noon.addMSecs(i * 50));
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(pendingText().size(), million);
    QTRY_COMPARE(model->rowCount(), 1);
    QCOMPARE(pendingText().size(), 0);
    QCOMPARE(lastRow->text().size(), million);
    QVERIFY(lastRow->text().endsWith(QLatin1String("aaa999")));
    QCOMPARE(rows(), QStringList{lastRow->text()});
    QCOMPARE(model->item(0)->data(Qt::DisplayRole).toString(), lastRow->text());
    QVERIFY(charactersPainted(view) < maxPainted);
}

PADSCOPE_TESTS(LongRowTests);
#include "tst_longrows.moc"
