#include "bargraph/picture.h"
#include "bargraph/recordingcanvas.h"
#include "support/datalines.h"
#include "support/markingtranslator.h"
#include "support/tests.h"

/// What is drawn, in its order. The cases are lines of a data file.
class TestPrimitives : public QObject
{
    Q_OBJECT

private slots:
    void pictures_data();
    void pictures();
    void givenAngle();
    void translations();
};

void TestPrimitives::pictures_data()
{
    QMap<QString, QStringList> pictures;
    QString state;
    for (const QStringList &line : dataLines(TEST_FOLDER "/primitives.txt", 1, 2)) {
        if (line.size() == 2)
            state = line[1];
        else
            pictures[state] += line[0];
    }
    addColumns<QStringList>("primitives");
    for (auto picture = pictures.cbegin(); picture != pictures.cend(); ++picture)
        addRow(qPrintable(picture.key()), picture.value());
}

void TestPrimitives::pictures()
{
    PictureView bars(QTest::currentDataTag());
    RecordingCanvas canvas;
    bars.render(&canvas);
    QTEST(canvas.primitives(), "primitives");
}

/// An angle that is given is shown, and leaves the needle where it is.
void TestPrimitives::givenAngle()
{
    PictureView bars("classic");
    RecordingCanvas canvas;
    QPainter painter(&canvas);
    Inspect::drawDial(bars.view, painter, QRect(10, 20, 400, 440), 1234);
    QCOMPARE(canvas.primitives().size(), 4);
    QVERIFY(canvas.primitives()[1].startsWith("line 70,415 110,415 "));
    QVERIFY(canvas.primitives()[2].startsWith("text 42,397 \" 1000\""));
    QVERIFY(canvas.primitives()[3].startsWith("text 42,440 \" 1234\""));
}

void TestPrimitives::translations()
{
    const MarkingTranslator translator;
    PictureView bars("meter 600 7 510");
    RecordingCanvas canvas;
    bars.render(&canvas);
    QStringList texts;
    for (const QString &text : canvas.primitives().filter("text"))
        texts += text.section('"', 1, 1);
    QCOMPARE(texts, (QStringList{"{bargraph: Raw: 510}", "{bargraph: Volts: 2.489}",
                                 "{bargraph: Min: 7 Max: 600 Delta: 593}"}));
}

PADSCOPE_TESTS(TestPrimitives);
#include "tst_primitives.moc"
