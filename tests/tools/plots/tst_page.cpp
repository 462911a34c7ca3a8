#include <QXmlStreamReader>

#include "pages.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// `padscope report` as a process.
class PageTests : public QObject
{
    Q_OBJECT

private slots:
    void noReports();
    void sections();
    void tables();
    void gapsAndJitter();
    void severalSessions();
    void pictureTexts();
    void failedCalls();
    void hostileTexts_data();
    void hostileTexts();
    void needsNothingElse();
};

void PageTests::sections()
{
    const QString text = page("sections", Files::read(QStringLiteral(EXAMPLE_CAPTURE)));
    QCOMPARE(texts(text, "h1"), QStringList{"Capture sections"}); // without its folder
    QCOMPARE(texts(text, "h2").size(), 1);
    QCOMPARE(texts(text, "h3"),
             (QStringList{"Overview", "Boards", "Calls that failed", "Calls that never returned", "Marks",
                          "Board 1001", "Losses", "Statistics"}));
    QCOMPARE(texts(text, "h4"),
             (QStringList{"The pen's path", "Signals", "Quality", "Voltage", "Rates and jitter",
                          "Time between reports of a type, and jitter: its difference from the median (ms)",
                          "Fields", "Durations of calls (ms)"}));
    // A path, fifteen signals, five qualities, a voltage, rates and jitter.
    QCOMPARE(pictures(text).size(), 1 + 15 + 5 + 1 + 2);
}

void PageTests::tables()
{
    const QString text = page("tables", whole(2) + mark("hello"), 3);
    const QStringList all = rows(text);
    for (const char *row : {
             "Began at | 2023-11-14T22:13:20.000000000Z",
             "Seconds | 1.100",
             "Ended | clean, exit status 0",
             "Packets | 12",
             "Lost | 2",
             "Packets of kind report | 3",
             "1001 | all | 3 | 10.0 | 2",
             " | SignalReport | 1 |  | ",
             "return not recorded | 1234 | orvexSendCommand(1001, &quot;?\\r&quot;)",
             "0.600000 | hi",
             "1.100000 | hello",
             "1001 | TextReport | 1 | 0.0 | – | – | – | – | – | – | – | –",
             "1001 | signal4.integrator60 |  | 1 | -1 | -1 | -1",
             "orvexAttach | 1 | 1 | 1.000 | 1.000 | 1.000 | 1.000",
             "orvexSendCommand | 1 | 0 | – | – | – | –",
         })
        QVERIFY2(all.contains(QString::fromUtf8(row)), qPrintable(row + ('\n' + all.join('\n').toUtf8())));
    QVERIFY(text.contains(QStringLiteral("<p>2 packets were lost.</p>")));
    QVERIFY(all.filter("Edited").isEmpty());
    const QByteArray edited = blocks::packet(examplecapture::startNs, packetBytes(6, 128, 0, 0, 0, "hello"));
    QVERIFY(rows(page("edited", start() + edited, 3)).contains(QStringLiteral("Edited | 1")));
}

/// Gaps of 10, 20 and 60 ms; the median is 20.
void PageTests::gapsAndJitter()
{
    QByteArray reports;
    for (const int index : {0, 1, 3, 9})
        reports += report(index, "34770cff03");
    const QString text = page("gaps", start() + reports, 3);
    const QString head = texts(text, "th").join(QStringLiteral(" | "));
    QVERIFY(
        head.contains(QStringLiteral("A second | Min | Median | 99 % | Max | Jitter min | Jitter median | "
                                     "Jitter 99 % | Jitter max")));
    QVERIFY(rows(text).contains(QStringLiteral("1001 | AdcReport | 4 | 33.3 | 10.000 | 20.000 | 60.000 | "
                                               "60.000 | 0.000 | 10.000 | 40.000 | 40.000")));
}

void PageTests::severalSessions()
{
    QByteArray other = packets().join();
    other.replace(blocks::number(0x5f0c93a1, 4), blocks::number(0x5f0c93a2, 4));
    const QString text = page("sessions", whole() + start() + other);
    QCOMPARE(texts(text, "h2"), (QStringList{"Session 5f0c93a1", "Session 5f0c93a2"}));
    QCOMPARE(texts(text, "h3").count(QStringLiteral("Board 1001")), 2);
    QVERIFY(text.contains(QStringLiteral(">Board 1001, session 5f0c93a2: reports a second<")));
}

/// Titles, axes with their units, and names.
void PageTests::pictureTexts()
{
    const QByteArray reports = report(0, "34770cff03") + report(1, "34770c0000");
    const QStringList all = pictures(page("texts", whole() + reports, 3));
    QVERIFY(!all.isEmpty());
    for (const QString &picture : all) {
        QXmlStreamReader reader(picture);
        while (!reader.atEnd())
            reader.readNext();
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
        QVERIFY(picture.contains(QStringLiteral(">Time (s)</text>")));
        QCOMPARE(picture.count(QStringLiteral("font-family=\"DejaVu Sans, Verdana, sans-serif\"")),
                 picture.count(QStringLiteral("font-family")));
    }
    const QString voltage = all.filter(QStringLiteral(">Voltage (V)</text>")).value(0);
    QVERIFY(voltage.contains(QStringLiteral("<title>Board 1001: Voltage (AdcReport)</title>")));
    QVERIFY(voltage.contains(QStringLiteral(">voltage</text>")));
    QCOMPARE(all.filter(QStringLiteral(">Signal (counts)</text>")).size(), 1);
    QCOMPARE(all.filter(QStringLiteral(">Reports a second (1/s)</text>")).size(), 1);
    QCOMPARE(all.filter(QStringLiteral(">Time between (ms)</text>")).size(), 1);
}

void PageTests::failedCalls()
{
    const QByteArray failed =
        blocks::packet(examplecapture::startNs + 1'100'000'000, packetBytes(3, 3, 6, 1001, -1, {}, 7, 0, 11));
    const QString text = page("failed", whole() + failed, 3);
    QVERIFY(rows(text).contains(QStringLiteral("1.100000 | orvexSendCommand(1001, &quot;?\\r&quot;) = -1")));
}

void PageTests::hostileTexts_data()
{
    addColumns<QByteArray, QString>("text", "shown");
    addRow("a script", QByteArray("<script>alert(1)</script>"), "&lt;script&gt;alert(1)&lt;/script&gt;");
    addRow("the end of a cell", QByteArray("</td></tr></table><img src=x>"),
           "&lt;/td&gt;&lt;/tr&gt;&lt;/table&gt;&lt;img src=x&gt;");
    addRow("an entity", QByteArray("&amp;&#60;"), "&amp;amp;&amp;#60;");
    addRow("quotes", QByteArray("\"'"), "&quot;'");
    addRow("control characters", QByteArray("a\0\x1b[2J\x7f", 7), "a\\x00\\x1b[2J\\x7f");
    addRow("no UTF-8", QByteArray("\xff\xc0\xaf"), "\\xff\\xc0\\xaf");
    addRow("UTF-8", QByteArray("\xc3\xa4\xe2\x82\xac"), QString::fromUtf8("\xc3\xa4\xe2\x82\xac"));
}

void PageTests::hostileTexts()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, shown);
    const QByteArray name = QByteArray("hostile") + QTest::currentDataTag();
    const QString written = page(name.constData(), whole() + mark(text), 3);
    QVERIFY(rows(written).contains(QStringLiteral("1.100000 | ") + shown));
    QVERIFY(!written.contains(QStringLiteral("<script")));
    QVERIFY(!written.contains(QStringLiteral("<img")));
}

/// Neither a script nor anything to be loaded, and a policy that forbids both.
void PageTests::needsNothingElse()
{
    const QString text = page("alone", Files::read(QStringLiteral(EXAMPLE_CAPTURE)));
    QVERIFY(text.contains(QStringLiteral(
        R"(<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; img-src data:">)")));
    for (const char *part :
         {"<script", "<link", "<img", "<iframe", "<object", "<image", "src=", "href=", "url("})
        QVERIFY2(!text.contains(QString::fromUtf8(part)), part);
}

/// Every section is there, and says that it has nothing.
void PageTests::noReports()
{
    const QString text = page("no-reports", start() + mark("alone"), 3);
    for (const char *section : {"The pen's path", "Signals", "Quality", "Rates and jitter"}) {
        const QString lines = QStringLiteral("<h4>%1</h4>\n<p>None.</p>\n").arg(QString::fromUtf8(section));
        QVERIFY2(text.contains(lines), section);
    }
}

PADSCOPE_TESTS(PageTests);
#include "tst_page.moc"
