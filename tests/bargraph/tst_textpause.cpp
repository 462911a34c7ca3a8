#include "bargraph/bargraphtest.h"
#include "bargraph/paintcounter.h"
#include "bargraph/textline.h"
#include "support/tests.h"

class TestTextPause : public BarGraphTest
{
    Q_OBJECT

private slots:
    void firstCallStartsThePause();
    void due_data();
    void due();
    void notDueLeavesThePauseRunning();
    void everyPictureRestartsThePause();
    void severalLines_data();
    void severalLines();

private:
};

/// Must run first: the time is kept for the life of the process.
void TestTextPause::firstCallStartsThePause()
{
    const auto untilMidnight = [] { return QTime::currentTime().msecsTo(QTime(23, 59, 59, 999)); };
    QTRY_VERIFY_WITH_TIMEOUT(untilMidnight() > 10000, 30000);

    const QTime before = QTime::currentTime();
    display(view, hex("00 00 00"), before.addMSecs(5000)); // of no kind that the view takes
    const QTime after = QTime::currentTime();
    QTRY_VERIFY(after.msecsTo(QTime::currentTime()) > 100);
    display(view, text(goodLine), before);
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox:"));
    display(view, text(goodLine), after.addMSecs(50));
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox: O"));
}

void TestTextPause::due_data()
{
    addColumns<int, bool>("afterMs", "shown");

    addRow("at once", 0, false);
    addRow("20 ms later", 20, false);
    addRow("21 ms later", 21, true);
    addRow("an hour later", 3600000, true);
    addRow("earlier, as past midnight", -21, false);
}

void TestTextPause::due()
{
    QFETCH(int, afterMs);
    QFETCH(bool, shown);
    PaintCounter paints(window.get());
    display(view, hex("34 77 0c 00 00"), noon);
    paints.take();
    display(view, text(goodLine), noon.addMSecs(afterMs));
    QCOMPARE(signalsOf(view), goodSignals);
    QCOMPARE(view->proxChar, 'O');
    QCOMPARE(view->frequency, qint64{900});
    QCOMPARE(view->proxLabel->text(), shown ? QStringLiteral("Prox: O") : QStringLiteral("Prox:"));
    QCOMPARE(view->freqSpin->value(), shown ? 900 : 0);
    QCOMPARE(view->spinFrequency, shown ? 900 : 0);
    QCOMPARE(paints.take(), shown ? 1 : 0);
}

void TestTextPause::notDueLeavesThePauseRunning()
{
    PaintCounter paints(window.get());
    display(view, hex("34 77 0c 00 00"), noon);
    paints.take();
    display(view, text(goodLine), noon.addMSecs(20));
    QCOMPARE(paints.take(), 0);
    display(view, text(goodLine), noon.addMSecs(21));
    QCOMPARE(paints.take(), 1);
    // That one restarted it.
    display(view, text(goodLine), noon.addMSecs(41));
    QCOMPARE(paints.take(), 0);
    display(view, text(goodLine), noon.addMSecs(42));
    QCOMPARE(paints.take(), 1);
}

void TestTextPause::everyPictureRestartsThePause()
{
    PaintCounter paints(window.get());
    const QByteArray reports[] = {fullReport(), hex("0a 2f 04 feff 6400 0080 77"), hex("34 77 0c 00 00")};
    for (const QByteArray &report : reports) {
        display(view, report, noon);
        paints.take();
        display(view, text(goodLine), noon.addMSecs(20));
        QCOMPARE(paints.take(), 0);
        display(view, text(goodLine), noon.addMSecs(21));
        QCOMPARE(paints.take(), 1);
    }
    // A report that this view ignores does not.
    display(view, hex("28 2f 02"), noon.addMSecs(42));
    display(view, text(goodLine), noon.addMSecs(43));
    QCOMPARE(paints.take(), 1);
}

void TestTextPause::severalLines_data()
{
    addColumns<QByteArray, int, bool>("characters", "firstSignal", "shown");

    const QByteArray second = lineWith(0, "0055"); // 85
    addRow("the second counts", goodLine + second, 85, true);
    addRow("a parsed line, then a short one", second + "short!", 85, true);
    addRow("a short line, then a parsed one", "short!" + second, 85, true);
    addRow("a parsed line, then the start of one", second + "0011 ", 85, true);
    addRow("two short ones", QByteArray("short!short!"), -7, false);
}

void TestTextPause::severalLines()
{
    QFETCH(QByteArray, characters);
    QFETCH(bool, shown);
    PaintCounter paints(window.get());
    display(view, hex("34 77 0c 00 00"), noon);
    paints.take();
    view->channelSignals[0] = -7;
    display(view, text(characters), noon.addMSecs(21));
    QTEST(int{view->channelSignals[0]}, "firstSignal");
    QCOMPARE(paints.take(), shown ? 1 : 0);

    // A packet without a line of its own shows nothing, whatever the packet before it did.
    display(view, text("xyz"), noon.addMSecs(100));
    QCOMPARE(paints.take(), 0);
}

PADSCOPE_TESTS(TestTextPause);
#include "tst_textpause.moc"
