#include <QBackingStore>
#include <QHeaderView>
#include <QImage>
#include <QPointer>
#include <QScrollBar>

#include "monitor/monitortest.h"

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

void processEvents()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

} // namespace

/// Rows that come in quick succession are painted together; the first after a rest is painted at once.
class Frames : public MonitorTest
{
    Q_OBJECT

private slots:
    void init();
    void rowAfterARestIsPaintedAtOnce();
    void rowsOfAFrameArePaintedTogether();
    void nothingIsPaintedWithinAFrame_data();
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

private:
    bool isHeldBack() const { return Inspect::isHeldBack(Inspect::pacer(*view)); }
    void beginFrame() { Inspect::sinceFrame(Inspect::pacer(*view)).start(); }
    void addAfterARest(const QString &text);
    void addWithinAFrame(const QString &text);
    void settle();
    QImage painted() const;
    QImage onScreen() const;

    QScrollBar *bar = nullptr;
};

/// A tab at rest, with rows that fill the view, so that a row more is a change in its scroll bar.
void Frames::init()
{
    MonitorTest::init();
    QVERIFY(show());
    bar = tree->verticalScrollBar();
    for (int row = 0; row < 60; ++row)
        add(QString::number(row));
    settle();
}

void Frames::addAfterARest(const QString &text)
{
    Inspect::sinceFrame(Inspect::pacer(*view)).invalidate();
    add(text);
}

void Frames::addWithinAFrame(const QString &text)
{
    beginFrame();
    add(text);
    QVERIFY(isHeldBack());
}

void Frames::settle()
{
    QTRY_VERIFY(!isHeldBack());
    processEvents();
}

/// The tab, painted anew.
QImage Frames::painted() const
{
    return view->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// What all paints so far have left.
QImage Frames::onScreen() const
{
    const auto *store = dynamic_cast<const QImage *>(view->backingStore()->paintDevice());
    if (!store)
        qFatal("the platform does not paint into an image");
    return store->copy({{0, 0}, view->size()}).convertToFormat(QImage::Format_RGB32);
}

void Frames::rowAfterARestIsPaintedAtOnce()
{
    const PaintCount ofRows(tree->viewport());
    const PaintCount ofLabel(lastRow);
    addAfterARest("one");
    QVERIFY(!isHeldBack());
    processEvents();
    QCOMPARE(ofRows.count, 1);
    QCOMPARE(ofLabel.count, 1);
}

void Frames::rowsOfAFrameArePaintedTogether()
{
    const PaintCount ofRows(tree->viewport());
    const PaintCount ofLabel(lastRow);
    addWithinAFrame("first");
    const qint64 start = Inspect::sinceFrame(Inspect::pacer(*view)).msecsSinceReference();
    for (int row = 0; row < 20; ++row)
        add(QString::number(row));
    settle();
    QCOMPARE(ofRows.count, 1);
    QCOMPARE(ofLabel.count, 1);
    QCOMPARE(lastRow->text(), QString("19"));
    // The next frame begins with this paint.
    QVERIFY(Inspect::sinceFrame(Inspect::pacer(*view)).msecsSinceReference() > start);
}

void Frames::nothingIsPaintedWithinAFrame_data()
{
    QTest::addColumn<int>("height");
    addRow("rows fill the view", 360);
    addRow("all rows fit", 3200);
}

void Frames::nothingIsPaintedWithinAFrame()
{
    QFETCH(int, height);
    view->resize(480, height);
    settle();
    const PaintCount ofRows(tree->viewport());
    const PaintCount ofBar(bar);
    const PaintCount ofLabel(lastRow);
    int rounds = 0;
    for (int row = 60; row < 150; ++row) {
        if (!isHeldBack()) {
            settle();
            beginFrame();
        }
        add(QString::number(row));
        const int before = ofRows.count + ofBar.count + ofLabel.count;
        QCoreApplication::processEvents();
        if (isHeldBack()) { // so that the frame has not ended meanwhile
            QCOMPARE(ofRows.count + ofBar.count + ofLabel.count, before);
            ++rounds;
        }
    }
    QVERIFY(rounds > 0);
}

void Frames::pictureShowsWhatIsHeldBack()
{
    addWithinAFrame("held back");
    const QImage held = painted();
    settle();
    QCOMPARE(painted(), held);
    addAfterARest("another");
    QVERIFY(painted() != held);
}

void Frames::viewFollowsWhileHeldBack()
{
    beginFrame();
    for (int row = 60; row <= 65; ++row)
        add(QString::number(row));
    QVERIFY(isHeldBack());
    QVERIFY(tree->viewport()->rect().contains(tree->visualRect(model->index(65, 0))));
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
    const auto threeFrames = [] { QTest::qWait(50); };
    const QMetaObject::Connection dialog =
        withinALayout ? connect(bar, &QScrollBar::rangeChanged, threeFrames)
                      : connect(model, &QStandardItemModel::rowsInserted, threeFrames);
    beginFrame();
    add("shown behind the dialog");
    disconnect(dialog);
    settle();
    QCOMPARE(onScreen(), painted());
}

void Frames::eventLoopWithinAChangeIsPainted()
{
    const PaintCount ofRows(tree->viewport());
    bool isPainted = false;
    const QMetaObject::Connection dialog = connect(bar, &QScrollBar::rangeChanged, [&] {
        isPainted = QTest::qWaitFor([&ofRows] { return ofRows.count > 0; });
    });
    beginFrame();
    add("painted while the dialog is open");
    QTRY_VERIFY(isPainted);
    disconnect(dialog);
}

void Frames::hostThatStopsUpdatesWithinAChange_data()
{
    QTest::addColumn<bool>("ofTheTab");
    addRow("of the rows", false);
    addRow("of the tab", true);
}

void Frames::hostThatStopsUpdatesWithinAChange()
{
    QFETCH(bool, ofTheTab);
    QWidget *stopped = ofTheTab ? view : tree->viewport();
    bool isStopped = false;
    const QMetaObject::Connection host = connect(bar, &QScrollBar::rangeChanged, [stopped, &isStopped] {
        stopped->setUpdatesEnabled(false);
        isStopped = true;
    });
    addWithinAFrame("held back");
    QTRY_VERIFY(isStopped);
    disconnect(host);
    settle();
    QVERIFY(!tree->viewport()->updatesEnabled());
    stopped->setUpdatesEnabled(true);
    QVERIFY(tree->viewport()->updatesEnabled());
    QVERIFY(tree->header()->viewport()->updatesEnabled());
    QVERIFY(lastRow->updatesEnabled());
}

void Frames::widgetMadeWithinAChangeIsPainted()
{
    QPointer<QLabel> note;
    connect(bar, &QScrollBar::rangeChanged, [this, &note] {
        if (note)
            return;
        note = new QLabel("a note of the host's", tree->viewport());
        note->show();
    });
    addWithinAFrame("held back");
    QTRY_VERIFY(note);
    settle();
    QVERIFY(note->updatesEnabled());
    QCOMPARE(onScreen(), painted());
}

void Frames::hostThatStopsUpdatesIsHeard()
{
    const PaintCount ofRows(tree->viewport());
    addWithinAFrame("held back");
    QCoreApplication::processEvents();
    view->setUpdatesEnabled(false);
    settle();
    QCOMPARE(ofRows.count, 0);
    view->setUpdatesEnabled(true);
    QTRY_VERIFY(ofRows.count > 0);
    settle();
    QCOMPARE(onScreen(), painted());
}

PADSCOPE_TESTS(Frames);
#include "tst_frames.moc"
