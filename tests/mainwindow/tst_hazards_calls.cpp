#include <QLabel>
#include <QSpinBox>

#include "bargraph.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/observedcalls.h"
#include "support/tests.h"

namespace {

/// A full signal report whose frequency word is `low` and `high`, at bytes 37 and 38.
QByteArray signalReport(char low, char high)
{
    QByteArray report(40, '\0');
    report[0] = 40;
    report[1] = 47;
    report[2] = 1;
    report[37] = low;
    report[38] = high;
    return report;
}

const QByteArray negativeFrequency = signalReport('\xFC', '\xFF'); // -4, which is -225 and clamped to 0
const QByteArray positiveFrequency = signalReport('\x08', '\x00'); // 8, which is 450

/// Lets the reports through that are otherwise dropped for coming too soon.
void liftRateLimit(qorvexgraph *window)
{
    window->displayThreshold = -1;
    window->barGraphView->displayThreshold = -1;
}

} // namespace

/// The driver library calls back, or runs the event loop, inside the calls that it receives.
class CallHazards : public QObject
{
    Q_OBJECT

private slots:
    void commandAnsweredOnItsOwnThread();
    void commandsAnsweredWithoutEnd();
    void noticeInsideAttach_data();
    void noticeInsideAttach();
    void closeInsideDetach_data();
    void closeInsideDetach();
    void closeInsideAttach_data();
    void closeInsideAttach();
    void closeInsideReattach_data();
    void closeInsideReattach();
    void closeInsideTypedCommand_data();
    void closeInsideTypedCommand();
    void closeInsideACommandOfTheBarGraph();
    void libraryStaysMappedWhileInUse();
    void attachInsideDetach();
};

void CallHazards::commandAnsweredOnItsOwnThread()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    liftRateLimit(&window);
    library.deliver(1, positiveFrequency);
    QCOMPARE(window.barGraphView->freqSpin->value(), 450);
    library.takeCalls();
    {
        const ObservedCalls observed(library, [&](const QString &call) {
            if (call.startsWith("orvexSendCommand"))
                library.deliver(1, positiveFrequency);
        });
        library.deliver(1, negativeFrequency);
    }
    // One command, because the spin box clamped; its answer is shown inside it, and nothing is left over.
    QCOMPARE(library.takeCalls(), QStringList{"orvexSendCommand(1, \">\")"});
    QCOMPARE(window.barGraphView->frequency, qint64{450});
    QVERIFY(window.packetQueue.empty());
    QCOMPARE(window.barGraphView->proxLabel->text(), QStringLiteral("Prox: O"));
    window.detachFromHardware();
}

void CallHazards::commandsAnsweredWithoutEnd()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    for (int i = 0; i < 5; ++i)
        window.AttachHardware(); // each adds a connection
    liftRateLimit(&window);
    constexpr int rounds = 2000;
    int commands = 0;
    int depth = 0;
    int deepest = 0;
    const ObservedCalls observed(library, [&](const QString &call) {
        if (!call.startsWith("orvexSendCommand") || ++commands > rounds)
            return;
        deepest = qMax(deepest, ++depth);
        // The second makes the spin box clamp again, which sends the next command.
        library.deliver(1, positiveFrequency);
        library.deliver(1, negativeFrequency);
        --depth;
    });
    library.deliver(1, positiveFrequency);
    library.deliver(1, negativeFrequency);
    QVERIFY2(deepest < 100, qPrintable(QString::number(deepest)));
    QTRY_VERIFY_WITH_TIMEOUT(commands > rounds, 60000);
    QTRY_VERIFY(window.packetQueue.empty());
    window.detachFromHardware();
}

void CallHazards::noticeInsideAttach_data()
{
    QTest::addColumn<bool>("ownThread");
    QTest::newRow("on the caller's own thread") << true;
    QTest::newRow("through an event loop in the call") << false;
}

void CallHazards::noticeInsideAttach()
{
    QFETCH(bool, ownThread);
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    qorvexgraph window;
    int notices = 0;
    const ObservedCalls observed(library, [&](const QString &call) {
        // From the middle of the enumeration.
        if (!call.startsWith(QLatin1String("orvexSetXferMask")) || ++notices > 50)
            return;
        if (ownThread) {
            qorvexgraph::pnp(&window);
        } else {
            library->plug();
            QCoreApplication::processEvents();
        }
    });
    window.AttachHardware();
    QCOMPARE(notices, 2);
    QTRY_VERIFY(notices > 50);
    QCoreApplication::processEvents();
    QCOMPARE(window.deviceIds, (QList<int>{1, 2}));
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>2 devices found.</b>"));
    window.detachFromHardware();
}

void CallHazards::closeInsideDetach_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("debug mode") << "orvexSetDriverDebugMode(1, 1, 4294967295)";
    QTest::newRow("first command") << R"(orvexSendCommand(1, ":MDU0\x0d"))";
    QTest::newRow("second command") << R"(orvexSendCommand(1, ":MDP0\x0d"))";
    QTest::newRow("last command") << R"(orvexSendCommand(2, ":MDP0\x0d"))";
    QTest::newRow("detach") << "orvexDetach()";
}

void CallHazards::closeInsideDetach()
{
    QFETCH(QString, call);
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    bool closed = false;
    const ObservedCalls observed(library, [&](const QString &seen) {
        if (seen != call || closed)
            return;
        closed = true;
        QMetaObject::invokeMethod(&window, "close", Qt::QueuedConnection);
        QCoreApplication::processEvents();
    });
    window.hide(); // detaches; a close inside a close would be refused by Qt itself
    QVERIFY(closed);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>2 devices found.</b> <i>Paused</i>"));
}

void CallHazards::closeInsideAttach_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("attach") << "orvexAttach()";
    QTest::newRow("notice callback") << "orvexSetPnpCallback";
    QTest::newRow("count") << "orvexGetDeviceCount()";
    QTest::newRow("record of a board") << "orvexEnumDeviceInfo(0";
    QTest::newRow("mask") << "orvexSetXferMask(1";
    QTest::newRow("data callback") << "orvexSetCallback(1";
    QTest::newRow("last data callback") << "orvexSetCallback(2";
}

void CallHazards::closeInsideAttach()
{
    QFETCH(QString, call);
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    qorvexgraph window;
    window.show();
    bool closed = false;
    const ObservedCalls observed(library, [&](const QString &seen) {
        if (closed || !seen.startsWith(call))
            return;
        closed = true;
        window.close();
    });
    window.AttachHardware();
    QVERIFY(closed);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QVERIFY(window.statusLabel->text().endsWith(QStringLiteral(" <i>Paused</i>")));
}

void CallHazards::closeInsideReattach_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("label");
    QTest::newRow("attach") << "orvexAttach()"
                            << "<b>2 devices found.</b> <i>Paused</i>";
    QTest::newRow("count") << "orvexGetDeviceCount()"
                           << "<b>2 devices found.</b> <i>Paused</i>";
    QTest::newRow("record of the first board") << "orvexEnumDeviceInfo(0"
                                               << "<i>No device found.</i> <i>Paused</i>";
    QTest::newRow("record of the second board") << "orvexEnumDeviceInfo(1"
                                                << "<b>1 device found.</b> <i>Paused</i>";
}

// The label shows what was enumerated when the window was closed.
void CallHazards::closeInsideReattach()
{
    QFETCH(QString, call);
    QFETCH(QString, label);
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    bool closed = false;
    const ObservedCalls observed(library, [&](const QString &seen) {
        if (closed || !seen.startsWith(call))
            return;
        closed = true;
        window.close();
    });
    window.AttachHardware();
    QVERIFY(closed);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(window.statusLabel->text(), label);
}

void CallHazards::closeInsideTypedCommand_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("attach") << "orvexAttach()";
    QTest::newRow("debug mode") << "orvexSetDriverDebugMode(1, 4, 4294967295)";
    QTest::newRow("command") << R"(orvexSendCommand(1, "A\x0d"))";
}

void CallHazards::closeInsideTypedCommand()
{
    QFETCH(QString, call);
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    qorvexgraph window;
    window.show();
    window.commandLine->setText(QStringLiteral("A"));
    bool closed = false;
    const ObservedCalls observed(library, [&](const QString &seen) {
        if (closed || seen != call)
            return;
        closed = true;
        window.close();
    });
    QTest::keyClick(window.commandLine, Qt::Key_Return);
    QVERIFY(closed);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void CallHazards::closeInsideACommandOfTheBarGraph()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    liftRateLimit(&window);
    library.deliver(1, positiveFrequency);
    const ObservedCalls observed(library, [&](const QString &seen) {
        if (seen == QLatin1String("orvexSendCommand(1, \">\")"))
            window.close();
    });
    library.deliver(1, negativeFrequency);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QVERIFY(window.packetQueue.empty());
}

void CallHazards::libraryStaysMappedWhileInUse()
{
    DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    bool mapped = false;
    static qorvexgraph *toClose;
    static bool *stillMapped;
    toClose = &window;
    stillMapped = &mapped;
    library->setObserver([](const char *call) {
        if (QByteArray(call) != "orvexSendCommand(1, \"A\")")
            return;
        toClose->close();
        // This returns into the library, which nobody else holds.
        *stillMapped = DriverLibrary::isLoaded();
    });
    library.close();
    QVERIFY(DriverLibrary::isLoaded());
    window.SendCommand("A");
    QVERIFY(mapped);
    QVERIFY(!window.hardware);
    QVERIFY(!DriverLibrary::isLoaded());
}

void CallHazards::attachInsideDetach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    window.AttachHardware();
    int detaches = 0;
    const ObservedCalls observed(library, [&](const QString &seen) {
        // The second is that of the binding's destruction.
        if (seen == QLatin1String("orvexDetach()") && ++detaches == 2)
            window.AttachHardware();
    });
    window.detachFromHardware();
    QCOMPARE(window.paused, window.hardware == nullptr);
    window.detachFromHardware();
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

PADSCOPE_TESTS(CallHazards);
#include "tst_hazards_calls.moc"
