#include "bargraph/attachedwindow.h"
#include "bargraph/display.h"
#include "support/capturedoutput.h"
#include "support/tests.h"

namespace {

/// A full signal report with nothing but a frequency word.
QByteArray frequencyReport(int raw)
{
    QByteArray report = hex("28 2f 01").leftJustified(40, '\0');
    report[37] = static_cast<char>(raw & 0xff);
    report[38] = static_cast<char>((raw >> 8) & 0xff);
    return report;
}

} // namespace

class TestFrequency : public QObject
{
    Q_OBJECT

private slots:
    void shown_data();
    void shown();
    void aboveTheRangeOnceMore();
    void belowTheRangeFromZero();
    void steps();
    void stepsWithoutBoard();
    void lock();
    void lockWithoutBoard();
};

void TestFrequency::shown_data()
{
    addColumns<int, qlonglong, int, int, QStringList, QByteArray>("raw", "frequency", "box", "spinFrequency",
                                                                  "calls", "printed");

    const QStringList none;
    addRow("as before", 16, 900LL, 900, 900, none, QByteArray());
    addRow("up", 32, 1800LL, 1800, 1800, none, QByteArray());
    addRow("down", 1, 56LL, 56, 56, none, QByteArray()); // 56.25
    addRow("zero", 0, 0LL, 0, 0, none, QByteArray());
    addRow("negative is clamped, which sends a step up", -4, -225LL, 0, 0, QStringList{sent(">")},
           QByteArray("-225 -> 0\n"));
    addRow("smallest", -32768, -1843200LL, 0, 0, QStringList{sent(">")}, QByteArray("-1843200 -> 0\n"));
    addRow("last within the range", 8888, 499950LL, 499950, 499950, none, QByteArray());
    // 8889 * 225 / 4 = 500006.25
    addRow("above the range is clamped, which sends a step down", 8889, 500006LL, 500000, 500000,
           QStringList{sent("<")}, QByteArray("500006 -> 500000\n"));
    addRow("largest", 32767, 1843143LL, 500000, 500000, QStringList{sent("<")},
           QByteArray("1843143 -> 500000\n"));
}

void TestFrequency::shown()
{
    QFETCH(int, raw);
    AttachedWindow attached;
    display(attached.view(), frequencyReport(16));
    QCOMPARE(attached.view()->freqSpin->value(), 900);
    QCOMPARE(attached.library.takeCalls(), QStringList());

    QByteArray printed;
    {
        CapturedOutput output(stdout);
        display(attached.view(), frequencyReport(raw));
        printed = output.text();
    }
    QTEST(qlonglong{attached.view()->frequency}, "frequency");
    QTEST(attached.view()->freqSpin->value(), "box");
    QTEST(attached.view()->spinFrequency, "spinFrequency");
    QTEST(attached.library.takeCalls(), "calls");
    QTEST(printed, "printed");
    QCOMPARE(attached.view()->freqLabel->text(), QStringLiteral("Freq:"));
}

/// The box holds its limit already and tells of no change, so nothing is sent.
void TestFrequency::aboveTheRangeOnceMore()
{
    AttachedWindow attached;
    display(attached.view(), frequencyReport(8889));
    attached.library.takeCalls();
    display(attached.view(), frequencyReport(32767));
    QCOMPARE(attached.view()->freqSpin->value(), 500000);
    QCOMPARE(attached.view()->spinFrequency, 1843143);
    QCOMPARE(attached.library.takeCalls(), QStringList());
}

void TestFrequency::belowTheRangeFromZero()
{
    AttachedWindow attached;
    display(attached.view(), frequencyReport(-4));
    QCOMPARE(attached.view()->freqSpin->value(), 0);
    QCOMPARE(attached.view()->spinFrequency, -225);
    QCOMPARE(attached.library.takeCalls(), QStringList());
}

void TestFrequency::steps()
{
    AttachedWindow attached;
    QSpinBox *box = attached.view()->freqSpin;
    const auto printedBy = [](const auto &action) {
        CapturedOutput output(stdout);
        action();
        return output.text();
    };

    QCOMPARE(printedBy([box] { box->setValue(10); }), QByteArray("0 -> 10\n"));
    QCOMPARE(attached.library.takeCalls(), QStringList{sent(">")});
    // A large step is one step.
    QCOMPARE(printedBy([box] { box->setValue(500); }), QByteArray("10 -> 500\n"));
    QCOMPARE(attached.library.takeCalls(), QStringList{sent(">")});
    QCOMPARE(printedBy([box] { box->stepDown(); }), QByteArray("500 -> 499\n"));
    QCOMPARE(attached.library.takeCalls(), QStringList{sent("<")});
    QCOMPARE(printedBy([box] { box->stepUp(); }), QByteArray("499 -> 500\n"));
    QCOMPARE(attached.library.takeCalls(), QStringList{sent(">")});
    // The value that the view knows of already.
    QCOMPARE(printedBy([&attached] { attached.view()->OnSpinFrequency(500); }), QByteArray());
    QCOMPARE(attached.library.takeCalls(), QStringList());
    QCOMPARE(attached.view()->spinFrequency, 500);
}

void TestFrequency::stepsWithoutBoard()
{
    AttachedWindow attached;
    attached.library.setBoards({});
    attached.window.AttachHardware();
    attached.library.takeCalls();
    attached.view()->freqSpin->setValue(10);
    QCOMPARE(attached.library.takeCalls(), QStringList());
    QCOMPARE(attached.view()->spinFrequency, 10);
}

void TestFrequency::lock()
{
    AttachedWindow attached;
    attached.view()->OnLockFrequency(Qt::Checked);
    QCOMPARE(attached.library.takeCalls(), (QStringList{sent(".\\x0dU8\\x0d"), sent("B\\x0d")}));
    attached.view()->OnLockFrequency(Qt::Unchecked);
    QCOMPARE(attached.library.takeCalls(), (QStringList{sent(".\\x0dU0\\x0d"), sent("B\\x0d")}));
    attached.view()->OnLockFrequency(Qt::PartiallyChecked);
    QCOMPARE(attached.library.takeCalls(), QStringList{sent("B\\x0d")});
    attached.view()->OnLockFrequency(3);
    QCOMPARE(attached.library.takeCalls(), QStringList{sent("B\\x0d")});
}

void TestFrequency::lockWithoutBoard()
{
    qorvexgraph window;
    window.barGraphView->OnLockFrequency(Qt::Checked);
    window.barGraphView->OnSpinFrequency(4);
    QCOMPARE(window.barGraphView->spinFrequency, 4);
}

PADSCOPE_TESTS(TestFrequency);
#include "tst_frequency.moc"
