#include <QXmlStreamReader>

#include "pages.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// Pages of captures with more than is shown, and further away.
class LargePageTests : public QObject
{
    Q_OBJECT

private slots:
    void extremeValues_data();
    void extremeValues();
    void manyBoards();
    void manySessions();
    void manyMarks();
};

void LargePageTests::extremeValues_data()
{
    addColumns<quint64, quint64>("first", "last");
    const quint64 max = ~quint64{0};
    addRow("hundreds of years", quint64(0), max / 2);
    addRow("more than can be told", quint64(0), max / 4 * 3);
    addRow("from end to end", quint64(0), max);
    addRow("backwards", max, quint64(0));
    addRow("a moment", quint64(5), quint64(5));
}

/// Positions at both ends of 32 bits, at any times.
void LargePageTests::extremeValues()
{
    QFETCH(quint64, first);
    QFETCH(quint64, last);
    const auto position = [](quint64 time, const char *digits) {
        const QByteArray report = QByteArray("1fa40000000000") + digits + digits;
        return blocks::packet(time, packetBytes(1, 1, 0, 1001, 0, QByteArray::fromHex(report), 1));
    };
    const QByteArray name = QByteArray("extreme ") + QTest::currentDataTag();
    const QString text =
        page(name.constData(), start() + position(first, "00000080") + position(last, "ffffff7f"), 3);
    QVERIFY(
        rows(text).contains(QStringLiteral("1001 | position.x |  | 2 | -2.14748e+09 | -0.5 | 2.14748e+09")));
    QVERIFY(text.contains(QStringLiteral(">Board 1001: the pen's path<")));
    QVERIFY(text.contains(QStringLiteral(">Board 1001: reports a second<")));
}

/// 150 sessions: the first hundred are shown.
void LargePageTests::manySessions()
{
    QByteArray bytes = start();
    for (int i = 0; i < 150; ++i) {
        QByteArray packet = packetBytes(6, 0, 0, 0, 0, "x");
        packet.replace(24, 4, blocks::number(quint64(i), 4));
        bytes += blocks::packet(quint64(i + 1), packet);
    }
    const QString text = page("manysessions", bytes, 3);
    QCOMPARE(texts(text, "h2").size(), 100);
    QVERIFY(text.contains(QStringLiteral("<p>50 more sessions are not shown.</p>")));
}

/// 40 boards: all are counted, 32 are drawn.
void LargePageTests::manyBoards()
{
    QByteArray bytes = start();
    for (int i = 0; i < 40; ++i)
        bytes += blocks::packet(quint64(i + 1), packetBytes(1, 1, 0, 2000 + i, 0, "x", 1, 0, quint64(i)));
    const QString text = page("boards", bytes, 3);
    QVERIFY(rows(text).contains(QStringLiteral("2039 | all | 1 | 0.0 | 0")));
    QVERIFY(texts(text, "h3").contains(QStringLiteral("Board 2031")));
    QVERIFY(!texts(text, "h3").contains(QStringLiteral("Board 2032")));
    QVERIFY(text.contains(QStringLiteral("<p>8 more boards are not drawn.</p>")));
}

void LargePageTests::manyMarks()
{
    QByteArray bytes = start();
    for (int i = 0; i < 1500; ++i)
        bytes += blocks::packet(quint64(i + 1),
                                packetBytes(6, 0, 0, 0, 0, "m" + QByteArray::number(i), 0, 0, quint64(i)));
    const QString text = page("marks", bytes, 3);
    QVERIFY(rows(text).contains(QStringLiteral("0.000001 | m999")));
    QVERIFY(!text.contains(QStringLiteral("m1000")));
    QVERIFY(text.contains(QStringLiteral("<p>500 more marks are not shown.</p>")));
}

PADSCOPE_TESTS(LargePageTests);
#include "tst_largepages.moc"
