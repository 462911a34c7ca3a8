#include <QImage>
#include <QTemporaryDir>

#include "support/displayserver.h"
#include "support/tests.h"

/// The window with the real tool on a display: what runs offscreen has 800 by 600 pixels, on which the tool
/// has no room at twice its size.
class SizeTest : public QObject
{
    Q_OBJECT

private slots:
    void fitsTheScreen_data();
    void fitsTheScreen();
};

void SizeTest::fitsTheScreen_data()
{
    addColumns<QString, QSize>("scale", "min");
    addRow("100 %", "1", QSize(900, 700));
    addRow("150 %", "1.5", QSize(1200, 700));
    addRow("200 %", "2", QSize(1200, 700));
}

void SizeTest::fitsTheScreen()
{
    QFETCH(QString, scale);
    QFETCH(QSize, min);
    QProcess server;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", startDisplayServer(server));
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("QT_SCALE_FACTOR", scale);
    const QTemporaryDir pictures;
    QProcess host;
    host.setProcessEnvironment(environment);
    host.start(TENDRO_HOST,
               {"--plugins", PADSCOPE_PLUGIN_FOLDER, "--for", "0", "--snapshot", pictures.path()});
    QVERIFY(host.waitForFinished(60000));
    server.terminate();
    QVERIFY(server.waitForFinished());
    QCOMPARE(host.exitCode(), 0);
    const QSize size = QImage(pictures.filePath("monitor.png")).size();
    // a window manager's frame fits too
    QVERIFY2(size == size.expandedTo(min).boundedTo(QSize(1278, 775)),
             qPrintable(QString("%1 by %2").arg(size.width()).arg(size.height())));
}

PADSCOPE_TESTS(SizeTest);
#include "tst_size.moc"
