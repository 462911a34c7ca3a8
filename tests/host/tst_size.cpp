#include "host/hostrun.h"
#include "support/tests.h"

#include <QImage>

/// The window with the real tool on a display of 1280 by 800 pixels: what runs offscreen has 800 by 600, on
/// which the tool has no room at twice its size.
class SizeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fitsTheScreen_data();
    void fitsTheScreen();
    void cleanupTestCase();

private:
    QProcess server_;
    QString display_;
};

void SizeTest::initTestCase()
{
    server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server_.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"),
                   QStringLiteral("tcp"), QStringLiteral("-noreset")});
    QByteArray number;
    while (!number.endsWith('\n') && server_.waitForReadyRead(20000))
        number += server_.readAllStandardOutput();
    QVERIFY2(number.endsWith('\n'), qPrintable(server_.errorString()));
    display_ = QLatin1Char(':') + QString::fromLatin1(number).trimmed();
}

void SizeTest::fitsTheScreen_data()
{
    addColumns<QString, QSize>("scale", "least");
    addRow("100 %", "1", QSize(900, 700));
    addRow("150 %", "1.5", QSize(1200, 700));
    addRow("200 %", "2", QSize(1200, 700));
}

void SizeTest::fitsTheScreen()
{
    QFETCH(QString, scale);
    QFETCH(QSize, least);
    const QTemporaryDir pictures;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display_);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
    const Run host =
        run({QStringLiteral("--plugins"), QStringLiteral(PADSCOPE_PLUGIN_FOLDER), QStringLiteral("--for"),
             QStringLiteral("0"), QStringLiteral("--snapshot"), pictures.path()},
            environment);
    QCOMPARE(host.status, 0);
    const QSize size = QImage(pictures.filePath(QStringLiteral("monitor.png"))).size();
    const auto text = QStringLiteral("%1 by %2").arg(size.width()).arg(size.height()).toLatin1();
    QVERIFY2(size.width() >= least.width() && size.height() >= least.height(), text);
    // a window manager's frame fits too
    QVERIFY2(size.width() <= 1278 && size.height() <= 775, text);
}

void SizeTest::cleanupTestCase()
{
    server_.terminate();
    QVERIFY(server_.waitForFinished());
}

PADSCOPE_TESTS(SizeTest);
#include "tst_size.moc"
