#include <QBackingStore>
#include <QHeaderView>
#include <QImage>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "framepacer.h"
#include "monitor/monitorview.h"
#include "qlineupdownedit.h"
#include "support/tests.h"

/// Rows that come in quick succession are painted together; the first after a rest is painted at once.
class Frames : public QObject
{
    Q_OBJECT

private slots:
    void rowAfterARestIsPaintedAtOnce();
    void rowsOfAFrameArePaintedTogether();
    void nothingIsPaintedWithinAFrame();
    void pictureShowsWhatIsHeldBack();
    void viewFollowsWhileHeldBack();
    void eventLoopWithinAChange_data();
    void eventLoopWithinAChange();
    void eventLoopWithinAChangeIsPainted();
    void hostThatStopsUpdatesIsHeard();
    void hostThatStopsUpdatesWithinAChange_data();
    void hostThatStopsUpdatesWithinAChange();
    void widgetMadeWithinAChangeIsPainted();
    void scrollBarIsThatOfAPlainView_data();
    void scrollBarIsThatOfAPlainView();
};

namespace {

class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

/// The tab, shown and at rest.
class ShownMonitor : public MonitorView
{
public:
    explicit ShownMonitor(const QSize &size = {480, 360})
    {
        window.tabs->setCurrentWidget(view);
        window.commandLine->setEnabled(false); // no cursor that blinks
        window.resize(size);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("the window is not shown");
        // Rows that fill the view, so that a row more is a change in its scroll bar.
        for (int row = 0; row < 60; ++row)
            add(QString::number(row));
        settle();
    }

    void add(const QString &text) { view->AddData(text, QString()); }
    void rest() { view->pacer->sinceFrame.invalidate(); }
    bool isHeldBack() const { return view->pacer->frameEnd.isActive(); }
    void settle()
    {
        if (!QTest::qWaitFor([this] { return !isHeldBack(); }))
            qFatal("the frame does not end");
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }
    QTreeView *rows() const { return view->treeView; }
    QLabel *lastRow() const { return view->lastRowLabel; }
    /// What all paints so far have left.
    QImage onScreen() const
    {
        const auto *store = dynamic_cast<const QImage *>(window.backingStore()->paintDevice());
        if (!store)
            qFatal("the platform does not paint into an image");
        return store->copy({{0, 0}, window.size()}).convertToFormat(QImage::Format_RGB32);
    }
};

} // namespace

void Frames::rowAfterARestIsPaintedAtOnce()
{
    ShownMonitor shown;
    PaintCount rows(shown.rows()->viewport());
    PaintCount label(shown.lastRow());
    shown.rest();
    shown.add("one");
    QVERIFY(!shown.isHeldBack());
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(rows.count, 1);
    QCOMPARE(label.count, 1);
}

void Frames::rowsOfAFrameArePaintedTogether()
{
    ShownMonitor shown;
    shown.rest();
    shown.add("first of its frame");
    shown.settle();
    PaintCount rows(shown.rows()->viewport());
    PaintCount label(shown.lastRow());
    shown.view->pacer->sinceFrame.start();
    for (int row = 0; row < 20; ++row)
        shown.add(QString::number(row));
    QVERIFY(shown.isHeldBack());
    shown.settle();
    QCOMPARE(rows.count, 1);
    QCOMPARE(label.count, 1);
    QCOMPARE(shown.label(), QString("19"));
}

void Frames::nothingIsPaintedWithinAFrame()
{
    ShownMonitor shown;
    const PaintCount rows(shown.rows()->viewport());
    const PaintCount bar(shown.rows()->verticalScrollBar());
    const PaintCount label(shown.lastRow());
    int rounds = 0;
    for (int row = 60; row < 150; ++row) {
        if (!shown.isHeldBack()) {
            shown.settle();
            shown.view->pacer->sinceFrame.start();
        }
        shown.add(QString::number(row));
        const int before = rows.count + bar.count + label.count;
        QCoreApplication::processEvents();
        if (shown.isHeldBack()) { // so that the frame has not ended meanwhile
            QCOMPARE(rows.count + bar.count + label.count, before);
            ++rounds;
        }
    }
    QVERIFY(rounds > 0);
}

void Frames::pictureShowsWhatIsHeldBack()
{
    ShownMonitor shown;
    shown.view->pacer->sinceFrame.start();
    shown.add("held back");
    QVERIFY(shown.isHeldBack());
    const QImage held = shown.window.grab().toImage();
    shown.settle();
    QCOMPARE(shown.window.grab().toImage(), held);
    shown.rest();
    shown.add("another");
    QVERIFY(shown.window.grab().toImage() != held);
}

void Frames::viewFollowsWhileHeldBack()
{
    ShownMonitor shown;
    const QScrollBar *bar = shown.rows()->verticalScrollBar();
    shown.view->pacer->sinceFrame.start();
    for (int row = 60; row <= 65; ++row)
        shown.add(QString::number(row));
    QVERIFY(shown.isHeldBack());
    const QRect newest = shown.rows()->visualRect(shown.view->model->index(65, 0));
    QVERIFY(shown.rows()->viewport()->rect().contains(newest));
    QCOMPARE(bar->value(), bar->maximum());
}

void Frames::eventLoopWithinAChange_data()
{
    QTest::addColumn<bool>("withinALayout");
    addRow("as rows are inserted", false);
    addRow("as the scroll bar moves", true);
}

void Frames::eventLoopWithinAChange()
{
    QFETCH(bool, withinALayout);
    ShownMonitor shown;
    const auto threeFrames = [] { QTest::qWait(50); };
    const QMetaObject::Connection dialog =
        withinALayout ? connect(shown.rows()->verticalScrollBar(), &QScrollBar::rangeChanged, threeFrames)
                      : connect(shown.view->model, &QStandardItemModel::rowsInserted, threeFrames);
    shown.view->pacer->sinceFrame.start();
    shown.add("shown behind the dialog");
    disconnect(dialog);
    shown.settle();
    QCOMPARE(shown.onScreen(), shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32));
}

void Frames::eventLoopWithinAChangeIsPainted()
{
    ShownMonitor shown;
    PaintCount rows(shown.rows()->viewport());
    bool isPainted = false;
    const QMetaObject::Connection dialog =
        connect(shown.rows()->verticalScrollBar(), &QScrollBar::rangeChanged,
                [&] { isPainted = QTest::qWaitFor([&rows] { return rows.count > 0; }); });
    shown.view->pacer->sinceFrame.start();
    shown.add("painted while the dialog is open");
    QTRY_VERIFY(isPainted);
    disconnect(dialog);
}

void Frames::hostThatStopsUpdatesWithinAChange_data()
{
    QTest::addColumn<bool>("ofTheWindow");
    addRow("of the rows", false);
    addRow("of the window", true);
}

void Frames::hostThatStopsUpdatesWithinAChange()
{
    QFETCH(bool, ofTheWindow);
    ShownMonitor shown;
    QWidget *stopped = ofTheWindow ? &shown.window : shown.rows()->viewport();
    bool isStopped = false;
    const QMetaObject::Connection host =
        connect(shown.rows()->verticalScrollBar(), &QScrollBar::rangeChanged, [stopped, &isStopped] {
            stopped->setUpdatesEnabled(false);
            isStopped = true;
        });
    shown.view->pacer->sinceFrame.start();
    shown.add("held back");
    QTRY_VERIFY(isStopped);
    disconnect(host);
    shown.settle();
    QVERIFY(!shown.rows()->viewport()->updatesEnabled());
    stopped->setUpdatesEnabled(true);
    QVERIFY(shown.rows()->viewport()->updatesEnabled());
    QVERIFY(shown.rows()->header()->viewport()->updatesEnabled());
    QVERIFY(shown.lastRow()->updatesEnabled());
}

void Frames::widgetMadeWithinAChangeIsPainted()
{
    ShownMonitor shown;
    QPointer<QLabel> note;
    connect(shown.rows()->verticalScrollBar(), &QScrollBar::rangeChanged, [&shown, &note] {
        if (note)
            return;
        note = new QLabel("a note of the host's", shown.rows()->viewport());
        note->show();
    });
    shown.view->pacer->sinceFrame.start();
    shown.add("held back");
    QTRY_VERIFY(note);
    shown.settle();
    QVERIFY(note->updatesEnabled());
    QCOMPARE(shown.onScreen(), shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32));
}

void Frames::hostThatStopsUpdatesIsHeard()
{
    ShownMonitor shown;
    PaintCount rows(shown.rows()->viewport());
    shown.view->pacer->sinceFrame.start();
    shown.add("held back");
    QCoreApplication::processEvents();
    shown.window.setUpdatesEnabled(false);
    QVERIFY(QTest::qWaitFor([&shown] { return !shown.isHeldBack(); }));
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    QCOMPARE(rows.count, 0);
    shown.window.setUpdatesEnabled(true);
    QTRY_VERIFY(rows.count > 0);
    shown.settle();
    QCOMPARE(shown.onScreen(), shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32));
}

void Frames::scrollBarIsThatOfAPlainView_data()
{
    addColumns<QSize, int>("size", "mode");
    addRow("few rows in sight", QSize(480, 300), int(QTreeView::ScrollPerItem));
    addRow("many", QSize(480, 900), int(QTreeView::ScrollPerItem));
    addRow("narrow", QSize(310, 360), int(QTreeView::ScrollPerItem));
    addRow("all rows fit", QSize(480, 3200), int(QTreeView::ScrollPerItem));
    addRow("by pixels, as a style may ask for", QSize(480, 360), int(QTreeView::ScrollPerPixel));
}

void Frames::scrollBarIsThatOfAPlainView()
{
    QFETCH(QSize, size);
    QFETCH(int, mode);
    ShownMonitor shown(size);
    shown.rows()->setVerticalScrollMode(QTreeView::ScrollMode(mode));
    QTreeView plain(shown.view);
    plain.setVerticalScrollMode(QTreeView::ScrollMode(mode));
    plain.setRootIsDecorated(false);
    plain.setUniformRowHeights(true);
    plain.setFont(shown.rows()->font());
    plain.setModel(shown.view->model);
    plain.setGeometry(shown.rows()->geometry());
    plain.header()->resizeSection(0, shown.rows()->columnWidth(0));
    plain.show();
    for (int row = 60; row < 240; ++row) {
        shown.add(QString::number(row));
        plain.header()->resizeSection(0, shown.rows()->columnWidth(0));
        plain.doItemsLayout();
        if (row % 4 == 0) {
            shown.settle();
            const QScrollBar *bar = shown.rows()->verticalScrollBar();
            const QScrollBar *expected = plain.verticalScrollBar();
            QCOMPARE(bar->maximum(), expected->maximum());
            QCOMPARE(bar->pageStep(), expected->pageStep());
            QCOMPARE(bar->isVisible(), expected->isVisible());
            QCOMPARE(shown.rows()->horizontalScrollBar()->maximum(), plain.horizontalScrollBar()->maximum());
            QCOMPARE(shown.rows()->viewport()->size(), plain.viewport()->size());
        }
    }
}

PADSCOPE_TESTS(Frames);
#include "tst_frames.moc"
