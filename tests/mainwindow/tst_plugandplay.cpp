#include <QLabel>

#include "mainwindow/qorvexgraph.h"
#include "tests/support/driverlibrary.h"
#include "tests/support/testmain.h"

/// Boards that come and go, which a thread of the driver tells.
class PlugAndPlayTests : public QObject
{
    Q_OBJECT

private slots:
    void noticeIsHandledOnTheGuiThread();
    void noticeStillQueuedAtDetachIsDropped_data();
    void noticeStillQueuedAtDetachIsDropped();
    void directNoticeStillAttachesAfterADetach();
};

void PlugAndPlayTests::noticeIsHandledOnTheGuiThread()
{
    const DriverLibrary library("complete");
    library.setBoards({11});
    qorvexgraph window;
    window.AttachHardware();
    library.takeCalls();

    library.setBoards({11, 12});
    library->plug();
    // The driver's thread has come and gone, and nothing happened on it.
    QCOMPARE(library.takeCalls(), QStringList());
    QCOMPARE(window.deviceIds, QList<int>({11}));
    QTRY_COMPARE(window.deviceIds, QList<int>({11, 12}));
    QCOMPARE(window.statusLabel->text(), QStringLiteral("<b>2 devices found.</b>"));

    library.setBoards({});
    library->plug();
    QTRY_COMPARE(window.statusLabel->text(), QStringLiteral("<i>No device found.</i>"));
    window.close();
}

void PlugAndPlayTests::noticeStillQueuedAtDetachIsDropped_data()
{
    QTest::addColumn<bool>("close");
    QTest::newRow("closed") << true;
    QTest::newRow("hidden") << false;
}

void PlugAndPlayTests::noticeStillQueuedAtDetachIsDropped()
{
    QFETCH(bool, close);
    const DriverLibrary library("complete");
    library.setBoards({11});
    qorvexgraph window;
    window.show();
    window.AttachHardware();
    library->plug();
    if (close)
        window.close();
    else
        window.hide();
    library.takeCalls();

    QCoreApplication::processEvents();
    QCOMPARE(library.takeCalls(), QStringList());
    QVERIFY(!window.hardware);
    QVERIFY(window.paused);
}

void PlugAndPlayTests::directNoticeStillAttachesAfterADetach()
{
    const DriverLibrary library("complete");
    library.setBoards({11});
    qorvexgraph window;
    window.AttachHardware();
    window.detachFromHardware();
    library.takeCalls();

    emit window.PnpHappened();
    const QStringList calls = library.takeCalls();
    QCOMPARE(calls.size(), 6);
    QCOMPARE(calls.first(), QStringLiteral("orvexAttach()"));
    QVERIFY(calls.at(1).startsWith("orvexSetPnpCallback("));
    QVERIFY(calls.last().startsWith("orvexSetCallback(11, "));
    QVERIFY(!window.paused);
    window.close();
}

PADSCOPE_TEST_MAIN(PlugAndPlayTests)
#include "tst_plugandplay.moc"
