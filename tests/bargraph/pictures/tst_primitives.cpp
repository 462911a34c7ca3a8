#include "bargraph/bargraphtest.h"
#include "bargraph/pictures/picture.h"
#include "bargraph/pictures/recordingcanvas.h"
#include "support/tests.h"

namespace {

const QRect area(10, 20, 400, 440);

} // namespace

/// What is drawn, in its order, where the pixels alone don't tell.
class TestPrimitives : public BarGraphTest
{
    Q_OBJECT

private slots:
    void init();
    void classicBars();
    void gradientBars();
    void dial();
    void meter();
    void orderOfThePicture();

private:
};

void TestPrimitives::init()
{
    BarGraphTest::init();
    view->viewFont = testFont();
}

/// The last value is positive but less than a pixel, so it has the colours of a falling bar.
void TestPrimitives::classicBars()
{
    RecordingCanvas canvas;
    {
        QPainter painter(&canvas);
        view->DoHistogram(&painter, area, 1, 1000, -1000, 19);
    }
    QCOMPARE(canvas.primitives(), (QStringList{
                                      "rect 125,200 25x-50 pen #6ee6c8/1 brush #000000",
                                      "rect 150,200 25x50 pen #f0f064/1 brush #000000",
                                      "rect 175,200 25x0 pen #f0f064/1 brush #000000",
                                      "line 125,200 200,200 pen #ffffff/1",
                                  }));
}

void TestPrimitives::gradientBars()
{
    view->classicMode = false;
    RecordingCanvas canvas;
    {
        QPainter painter(&canvas);
        view->DoHistogram(&painter, area, 0, 20, 19, -20);
    }
    QCOMPARE(canvas.primitives(), (QStringList{
                                      "rect 30,200 25x-1 pen #000000/0 across 30..54 0:#01015a 1:#0000fa",
                                      "rect 55,200 25x0 pen #000000/0 across 55..79 0:#be1808 1:#fabe28",
                                      "rect 80,200 25x1 pen #000000/0 across 80..104 0:#be1808 1:#fabe28",
                                      "line 30,200 105,200 pen #ffffff/1",
                                  }));
}

void TestPrimitives::dial()
{
    RecordingCanvas canvas;
    {
        QPainter painter(&canvas);
        view->DoVectorFine(&painter, area, 3, 0, 1000, 1000, -1, 1, 0);
    }
    QCOMPARE(canvas.primitives(),
             (QStringList{
                 "ellipse 300,375 80x80 pen #ffffff/1 around 340,415/40 0:#00dc00 0.2:#000000",
                 "line 340,415 340,375 pen #00dc00/2",
                 "text 312,397 \" 1732\" pen #00dc00/2",
                 "text 312,440 \" 2048\" pen #00dc00/2",
             }));
}

void TestPrimitives::meter()
{
    view->voltageMin = 7;
    view->voltageMax = 600;
    RecordingCanvas canvas;
    {
        QPainter painter(&canvas);
        view->DoVoltageMeter(&painter, area, 510);
    }
    QCOMPARE(canvas.primitives(), (QStringList{
                                      "rect 30,30 26x420 pen #000000/1 across 30..55 0:#0a280a 1:#0af00a",
                                      "line 30,449 55,449 pen #ffffff/1",
                                      "text 67,240 \"Raw: 510\" pen #ffffff/1",
                                      "text 67,265 \"Volts: 2.489\" pen #ffffff/1",
                                      "text 67,290 \"Min: 7 Max: 600 Delta: 593\" pen #ffffff/1",
                                  }));
}

/// Bars and dial of a channel, then the next channel; each dial lies over the bars of its channel.
void TestPrimitives::orderOfThePicture()
{
    RecordingCanvas canvas;
    view->layout()->setEnabled(false);
    view->drawFrame->setGeometry(area);
    view->setParent(nullptr);
    view->resize(480, 500);
    view->render(&canvas, QPoint(), QRegion(), QWidget::RenderFlags());
    view->setParent(window.get());
    QStringList kinds;
    const QStringList primitives = canvas.primitives();
    for (const QString &primitive : primitives)
        kinds += primitive.section(QLatin1Char(' '), 0, 1);
    QCOMPARE(kinds, (QStringList{
                        "rect 10,20",                                      //
                        "rect 30,200",  "rect 55,200",     "rect 80,200",  //
                        "line 30,200",  "ellipse 30,375",                  //
                        "line 70,415",  "text 42,397",     "text 42,440",  //
                        "rect 125,200", "rect 150,200",    "rect 175,200", //
                        "line 125,200", "ellipse 120,375",                 //
                        "line 160,415", "text 132,397",    "text 132,440", //
                        "rect 220,200", "rect 245,200",    "rect 270,200", //
                        "line 220,200", "ellipse 210,375",                 //
                        "line 250,415", "text 222,397",    "text 222,440", //
                        "rect 315,200", "rect 340,200",    "rect 365,200", //
                        "line 315,200", "ellipse 300,375",                 //
                        "line 340,415", "text 312,397",    "text 312,440", //
                    }));
}

PADSCOPE_TESTS(TestPrimitives);
#include "tst_primitives.moc"
