#include <QHeaderView>
#include <QLabel>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTreeView>

#include "monitor.h"
#include "qorvexgraph.h"
#include "support/countingpaintdevice.h"
#include "support/packets.h"
#include "support/tests.h"

namespace {

constexpr int million = 1000000;
constexpr int mostPainted = 20000;   // characters
constexpr int widestColumn = 400000; // pixels

int charactersPainted(QWidget *widget)
{
    CountingPaintDevice device;
    widget->render(&device);
    return device.characters();
}

} // namespace

/// A text stream without line ends: everything is kept, and no more is painted than can be seen.
class LongRowTests : public QObject
{
    Q_OBJECT

private slots:
    void longRowIsKeptWhole();
    void longRowIsPaintedInPart();
    void shortRowIsPaintedWhole();
    void columnStaysOfAWidthThatCanBeShown();
    void streamWithoutLineEnds();
};

void LongRowTests::longRowIsKeptWhole()
{
    qorvexgraph window;
    monitor *view = window.monitorView;
    const QString text(million, QLatin1Char('x'));
    view->AddData(text, QString());
    QCOMPARE(view->model->item(0)->text().size(), million);
    QCOMPARE(view->model->item(0)->data(Qt::DisplayRole).toString(), text);
    QCOMPARE(view->lastRowLabel->text(), text);
}

void LongRowTests::longRowIsPaintedInPart()
{
    qorvexgraph window;
    window.tabs->setCurrentIndex(1);
    window.show();
    monitor *view = window.monitorView;
    view->AddData(QString(million, QLatin1Char('x')), QString(million, QLatin1Char('y')));
    QVERIFY(charactersPainted(view->lastRowLabel) > 100);
    QVERIFY2(charactersPainted(view->lastRowLabel) < mostPainted,
             qPrintable(QString::number(charactersPainted(view->lastRowLabel))));
    QVERIFY(charactersPainted(view->treeView->viewport()) > 100);
    QVERIFY2(charactersPainted(view->treeView->viewport()) < mostPainted,
             qPrintable(QString::number(charactersPainted(view->treeView->viewport()))));
}

void LongRowTests::shortRowIsPaintedWhole()
{
    qorvexgraph window;
    window.tabs->setCurrentIndex(1);
    window.show();
    monitor *view = window.monitorView;
    const int before = charactersPainted(view->treeView->viewport());
    const QString row(200, QLatin1Char('x'));
    view->AddData(row, QString());
    QCOMPARE(charactersPainted(view->lastRowLabel), 200);
    QCOMPARE(charactersPainted(view->treeView->viewport()) - before, 200);
}

void LongRowTests::columnStaysOfAWidthThatCanBeShown()
{
    qorvexgraph window;
    window.tabs->setCurrentIndex(1);
    window.show();
    monitor *view = window.monitorView;
    view->AddData(QString(million, QLatin1Char('x')), QString());
    QVERIFY(view->treeView->columnWidth(0) > 2000);
    QVERIFY2(view->treeView->columnWidth(0) < widestColumn,
             qPrintable(QString::number(view->treeView->columnWidth(0))));
    QVERIFY(view->lastRowLabel->sizeHint().width() < widestColumn);
}

void LongRowTests::streamWithoutLineEnds()
{
    qorvexgraph window;
    window.tabs->setCurrentIndex(1);
    window.show();
    monitor *view = window.monitorView;
    for (int i = 0; i < 1000; ++i) {
        // Different in each packet, since a repeated one is dropped.
        _DataPacket packet =
            packetOf("\x40\x32" + QByteArray::number(i).rightJustified(1000, 'a'), noon.addMSecs(i * 50));
        view->Display(&packet);
    }
    QCOMPARE(view->model->rowCount(), 0);
    QCOMPARE(view->pendingText.size(), million);
    QTRY_COMPARE(view->model->rowCount(), 1);
    QCOMPARE(view->pendingText.size(), 0);
    QCOMPARE(view->model->item(0)->text().size(), million);
    QVERIFY(view->model->item(0)->text().endsWith(QLatin1String("aaa999")));
    QVERIFY(charactersPainted(&window) < mostPainted);
}

PADSCOPE_TESTS(LongRowTests);
#include "tst_longrows.moc"
