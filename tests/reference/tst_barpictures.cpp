#include "reference/reference.h"
#include "reference/reports.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

#include <QCheckBox>
#include <QStyleFactory>

/// The "Bar Graph" tab, controls included, looks as it always has.
class BarPictureTests : public QObject
{
    Q_OBJECT

private slots:
    void pictures_data();
    void pictures();
};

void BarPictureTests::pictures_data()
{
    QTest::addColumn<bool>("classic");
    QTest::addColumn<QVector<int>>("signal");
    QTest::addColumn<int>("voltage");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<qreal>("pixelRatio");

    const QVector<int> none(12, 0);
    const QVector<int> large{3000, -3000, 3400, -3500, 2500, -100, 5, -5, 0, 7000, -7000, 1};
    const QVector<int> small{1, 2, 3, -4, 5, -6, 7, -8, 9, 10, 0, -10};
    const QSize usual(520, 420);
    QTest::newRow("bars/classic-none") << true << none << -1 << usual << 1.0;
    QTest::newRow("bars/modern-none") << false << none << -1 << usual << 1.0;
    QTest::newRow("bars/classic-large") << true << large << -1 << usual << 1.0;
    QTest::newRow("bars/modern-large") << false << large << -1 << usual << 1.0;
    QTest::newRow("bars/classic-small") << true << small << -1 << usual << 1.0;
    QTest::newRow("bars/modern-small") << false << small << -1 << QSize(430, 300) << 1.0;
    QTest::newRow("bars/classic-large-1.5") << true << large << -1 << usual << 1.5;
    QTest::newRow("bars/modern-large-1.5") << false << large << -1 << usual << 1.5;
    QTest::newRow("bars/classic-large-2") << true << large << -1 << usual << 2.0;
    QTest::newRow("bars/modern-large-2") << false << large << -1 << usual << 2.0;
    QTest::newRow("bars/voltage-0") << true << none << 0 << usual << 1.0;
    QTest::newRow("bars/voltage-510") << true << none << 510 << usual << 1.0;
    QTest::newRow("bars/voltage-1023") << false << none << 1023 << usual << 1.0;
    QTest::newRow("bars/voltage-510-1.5") << false << none << 510 << usual << 1.5;
    QTest::newRow("bars/low") << false << large << -1 << QSize(420, 260) << 1.0;
}

void BarPictureTests::pictures()
{
    QFETCH(bool, classic);
    QFETCH(QVector<int>, signal);
    QFETCH(int, voltage);
    QFETCH(QSize, size);
    QFETCH(qreal, pixelRatio);
    ShownWindow shown({{QStringLiteral("Classic Mode"), classic}});
    shown.window->commandLine->setEnabled(false); // no cursor that blinks
    shown.show(shown.bars, size);
    QByteArray report(40, 0);
    report[0] = 40;
    report[1] = 47;
    report[2] = 1;
    for (int i = 0; i < 12; ++i) {
        report[13 + 2 * i] = static_cast<char>(signal.at(i));
        report[14 + 2 * i] = static_cast<char>(signal.at(i) >> 8);
    }
    report[37] = 100;
    shown.send(shown.bars, report);
    if (voltage >= 0) {
        const char bytes[] = {52, 119, 0, static_cast<char>(voltage), static_cast<char>(voltage >> 8)};
        shown.send(shown.bars, QByteArray(bytes, sizeof bytes));
    }
    const QString difference =
        reference::difference(QLatin1String(QTest::currentDataTag()), shown.picture(pixelRatio));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

PADSCOPE_TESTS(BarPictureTests);
#include "tst_barpictures.moc"
