#include <QLabel>
#include <QStandardItemModel>
#include <QTabWidget>

#include "datapacket.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/observedcalls.h"
#include "support/tests.h"

namespace {

const QByteArray rawReport("\x04\x21"
                           "ab",
                           4);

/// Does something inside the first or second orvexDetach() of a detach, once.
class InsideDetach
{
public:
    InsideDetach(const DriverLibrary &library, int number, std::function<void()> action)
        : observed(library, [this, number, action](const QString &call) {
            if (call == QLatin1String("orvexDetach()") && ++count == number)
                action();
        })
    {
    }

private:
    int count = 0;
    ObservedCalls observed;
};

void addBothDetaches()
{
    QTest::addColumn<int>("number");
    QTest::newRow("the first orvexDetach") << 1;
    QTest::newRow("that of the binding's destruction") << 2;
}

QStringList rowsOf(const qorvexgraph &window)
{
    QStringList rows;
    for (int row = 0; row < window.monitorView->model->rowCount(); ++row)
        rows += window.monitorView->model->item(row)->text();
    return rows;
}

} // namespace

/// What the driver library does inside the calls of a detach.
class DetachHazards : public QObject
{
    Q_OBJECT

private slots:
    void notificationInsideDetach_data();
    void notificationInsideDetach();
    void notificationWhileHiding_data();
    void notificationWhileHiding();
    void reportInsideTheLastDetach();
    void reportOfAThreadInsideTheLastDetach();
    void directCallInsideDetach_data();
    void directCallInsideDetach();
    void commandInsideDetach_data();
    void commandInsideDetach();
    void closeAfterADirectCallInsideDetach();
    void boardsAreQuietedOnce();
};

void DetachHazards::notificationInsideDetach_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("ownThread");
    const auto addRows = [](const char *name, const char *call, int number) {
        QTest::addRow("%s, on the caller's own thread", name) << call << number << true;
        QTest::addRow("%s, through an event loop in the call", name) << call << number << false;
    };
    addRows("debug mode", "orvexSetDriverDebugMode(1, 1, 4294967295)", 1);
    addRows("command", R"(orvexSendCommand(1, ":MDP0\x0d"))", 1);
    addRows("first orvexDetach", "orvexDetach()", 1);
    addRows("last orvexDetach", "orvexDetach()", 2);
}

void DetachHazards::notificationInsideDetach()
{
    QFETCH(QString, call);
    QFETCH(int, number);
    QFETCH(bool, ownThread);
    DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    library.takeCalls();
    int count = 0;
    {
        const ObservedCalls observed(library, [&](const QString &seen) {
            if (seen != call || ++count != number)
                return;
            if (ownThread) {
                qorvexgraph::pnp(&window);
            } else {
                library->plug();
                QCoreApplication::processEvents();
            }
        });
        QVERIFY(window.close());
        QTest::qWait(10); // longer than a repeated attach waits
    }
    QVERIFY(count >= number);
    const QStringList expected{
        "orvexSetDriverDebugMode(1, 1, 4294967295)",
        "orvexSendCommand(1, \":MDU0\\x0d\")",
        "orvexSendCommand(1, \":MDP0\\x0d\")",
        "orvexDetach()",
        "orvexDetach()",
    };
    QCOMPARE(library.takeCalls(), expected);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b> <i>Paused</i>"));
    library.close();
    QVERIFY(!DriverLibrary::isLoaded());
}

void DetachHazards::notificationWhileHiding_data()
{
    QTest::addColumn<Qt::ConnectionType>("type");
    QTest::newRow("hidden at once") << Qt::DirectConnection;
    QTest::newRow("hidden by a queued call") << Qt::QueuedConnection;
}

void DetachHazards::notificationWhileHiding()
{
    QFETCH(Qt::ConnectionType, type);
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    const InsideDetach observed(library, 2, [&] { qorvexgraph::pnp(&window); });
    QMetaObject::invokeMethod(&window, "hide", type);
    QCoreApplication::processEvents();
    QVERIFY(!window.isVisible());
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

// The binding is there until its destruction has ended, so the report is shown at once like any other on the
// caller's thread, and doesn't stand in the queue until the next attach.
void DetachHazards::reportInsideTheLastDetach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.tabs->setCurrentWidget(window.monitorView);
    window.AttachHardware();
    QStringList shown;
    const InsideDetach observed(library, 2, [&] {
        library.deliver(1, rawReport);
        shown = rowsOf(window);
    });
    window.detachFromHardware();
    QCOMPARE(shown, QStringList{".!ab   04 21 61 62 "});
    QVERIFY(window.packetQueue.empty());
}

// Its signal arrives when the window is detached, and so it does wait for the next attach.
void DetachHazards::reportOfAThreadInsideTheLastDetach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.tabs->setCurrentWidget(window.monitorView);
    window.AttachHardware();
    {
        const InsideDetach observed(library, 2, [&] { library.deliver(1, rawReport, 1); });
        window.detachFromHardware();
    }
    QCoreApplication::processEvents();
    QCOMPARE(rowsOf(window), QStringList());
    QCOMPARE(window.packetQueue.size(), std::size_t{1});

    window.AttachHardware();
    library.deliver(1, rawReport);
    QCOMPARE(rowsOf(window), (QStringList{".!ab   04 21 61 62 ", ".!ab   04 21 61 62 "}));
    window.detachFromHardware();
}

void DetachHazards::directCallInsideDetach_data()
{
    addBothDetaches();
}

void DetachHazards::directCallInsideDetach()
{
    QFETCH(int, number);
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();
    const InsideDetach observed(library, number, [&] { window.AttachHardware(); });
    window.detachFromHardware();
    QTest::qWait(10); // longer than a repeated attach waits
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>1 device found.</b> <i>Paused</i>"));
    const QStringList expected{
        "orvexSetDriverDebugMode(1, 1, 4294967295)",
        "orvexSendCommand(1, \":MDU0\\x0d\")",
        "orvexSendCommand(1, \":MDP0\\x0d\")",
        "orvexDetach()",
        "orvexDetach()",
    };
    QCOMPARE(library.takeCalls(), expected);
}

void DetachHazards::commandInsideDetach_data()
{
    addBothDetaches();
}

// There is a binding, so the command takes the usual way, and nothing attaches again.
void DetachHazards::commandInsideDetach()
{
    QFETCH(int, number);
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.AttachHardware();
    window.commandLine->setText(QStringLiteral("A"));
    library.takeCalls();
    const InsideDetach observed(library, number,
                                [&] { QTest::keyClick(window.commandLine, Qt::Key_Return); });
    window.detachFromHardware();
    QTest::qWait(10); // longer than a repeated attach waits
    QStringList expected{
        "orvexSetDriverDebugMode(1, 1, 4294967295)",
        "orvexSendCommand(1, \":MDU0\\x0d\")",
        "orvexSendCommand(1, \":MDP0\\x0d\")",
        "orvexDetach()",
        "orvexDetach()",
    };
    expected.insert(3 + number, "orvexSendCommand(1, \"A\\x0d\")");
    QCOMPARE(library.takeCalls(), expected);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void DetachHazards::closeAfterADirectCallInsideDetach()
{
    const DriverLibrary library("complete");
    library.setBoards({1});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    const InsideDetach observed(library, 1, [&] {
        window.AttachHardware();
        window.close();
    });
    window.hide();
    QTest::qWait(10); // longer than a repeated attach waits
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void DetachHazards::boardsAreQuietedOnce()
{
    const DriverLibrary library("complete");
    library.setBoards({1, 2});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    library.takeCalls();
    const ObservedCalls observed(library, [&](const QString &) { window.detachFromHardware(); });
    window.hide();
    const QStringList expected{
        "orvexSetDriverDebugMode(1, 1, 4294967295)",
        "orvexSendCommand(1, \":MDU0\\x0d\")",
        "orvexSendCommand(1, \":MDP0\\x0d\")",
        "orvexSetDriverDebugMode(2, 1, 4294967295)",
        "orvexSendCommand(2, \":MDU0\\x0d\")",
        "orvexSendCommand(2, \":MDP0\\x0d\")",
        "orvexDetach()",
        "orvexDetach()",
    };
    QCOMPARE(library.takeCalls(), expected);
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

PADSCOPE_TESTS(DetachHazards);
#include "tst_hazards_detach.moc"
