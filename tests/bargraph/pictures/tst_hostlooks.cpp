#include <QDebug>
#include <QRandomGenerator>
#include <QStyleFactory>

#include "bargraph/pictures/picture.h"
#include "support/tests.h"

namespace {

/// What a host may say of its widgets without giving them a background.
constexpr const char *rules[] = {
    "* { color: red }",
    "* { font: bold 15px }",
    "* { border: 1px solid green }",
    "QFrame { border: 3px dashed red }",
    "QFrame { border: none }",
    "QFrame { border: 2px solid blue; border-radius: 6px }",
    "QFrame { border-top: 2px solid blue }",
    "QFrame { padding: 4px }",
    "QFrame { margin: 3px }",
    "QFrame { min-width: 150px; max-height: 300px }",
    "QFrame:disabled { border: 4px solid gray }",
    "QFrame { selection-color: red }",
    "QFrame { color: palette(highlight) }",
    "QLabel, QCheckBox { background: yellow }",
};

constexpr const char *backgrounds[] = {
    "* { background: white }",
    "* { background: white !important }",
    "QWidget { background-color: #eeeeee }",
    "QFrame { background: palette(window) }",
    "QFrame:enabled { background: white }",
    "QWidget QFrame { background-color: rgb(1, 2, 3) }",
    "* { background: qlineargradient(x1:0, y1:0, x2:1, y2:1, stop:0 white, stop:1 red) }",
};

/// The view with a frame that is left alone.
class PlainView : public bargraph
{
public:
    using bargraph::bargraph;

protected:
    bool event(QEvent *event) override { return qorvexwidget::event(event); }
};

void dress(bargraph *view)
{
    setSignals(view, {3000, -3000, 3400, -3500, 2500, -100, 5, -5, 0, 7000, -7000, 1});
    view->viewFont = testFont();
    view->resize(520, 420);
}

QString measuresOf(const QFrame *frame)
{
    QString text;
    QDebug(&text) << frame->geometry() << frame->frameRect() << frame->contentsRect() << frame->sizeHint()
                  << frame->minimumSizeHint() << frame->frameStyle() << frame->frameWidth()
                  << frame->lineWidth();
    return text;
}

} // namespace

/// The bar graph under the style sheets, palettes and styles of a host.
class TestHostLooks : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void noBackgroundHidesThePicture_data();
    void noBackgroundHidesThePicture();
    void otherwiseTheFrameIsPlain();

private:
    QString sheet();
    void change(QWidget *parent, bargraph *view, quint32 what, quint32 value, const QString &text);

    QRandomGenerator random;
};

void TestHostLooks::cleanup()
{
    qApp->setStyleSheet(QString());
    QApplication::setPalette(QPalette());
}

void TestHostLooks::noBackgroundHidesThePicture_data()
{
    addColumns<QString, QString>("background", "where");
    for (const char *background : backgrounds) {
        for (const char *where : {"the application, at first", "the application, later", "the window"})
            QTest::addRow("%s: %s", where, background)
                << QString::fromLatin1(background) << QString::fromLatin1(where);
    }
}

void TestHostLooks::noBackgroundHidesThePicture()
{
    QFETCH(QString, background);
    QFETCH(QString, where);
    const QRect frame(10, 50, 500, 360);
    const auto picture = [frame](bargraph *view) {
        view->layout()->activate();
        view->layout()->setEnabled(false); // a sheet may change the controls' heights
        view->drawFrame->setGeometry(frame);
        QImage image = emptyPicture(view->size());
        view->render(&image);
        return image.copy(frame);
    };
    qorvexgraph window;
    bargraph before(&window);
    dress(&before);
    const QImage expected = picture(&before);
    QVERIFY(extentOf(expected, QColor(0, 220, 0), expected.rect()).isValid());

    if (where == QLatin1String("the application, at first"))
        qApp->setStyleSheet(background);
    QWidget parent;
    auto *view = new bargraph(&window);
    view->setParent(&parent);
    dress(view);
    parent.setAttribute(Qt::WA_DontShowOnScreen);
    parent.show();
    if (where == QLatin1String("the application, later"))
        qApp->setStyleSheet(background);
    if (where == QLatin1String("the window"))
        parent.setStyleSheet(background);
    QCOMPARE(picture(view), expected);
}

/// Some of the rules, or none.
QString TestHostLooks::sheet()
{
    QString text;
    for (const char *rule : rules) {
        if (random.bounded(6) == 0)
            text += QLatin1String(rule) + QLatin1Char(' ');
    }
    return random.bounded(3) == 0 ? QString() : text;
}

/// One of the things that a host does with its widgets.
void TestHostLooks::change(QWidget *parent, bargraph *view, quint32 what, quint32 value, const QString &text)
{
    QPalette palette = parent->palette();
    palette.setColor(QPalette::WindowText, QColor(QRgb(value)));
    switch (what) {
    case 0:
        parent->setStyleSheet(text);
        break;
    case 1:
        parent->setPalette(palette);
        break;
    case 2:
        view->setPalette(palette);
        break;
    case 3:
        parent->setEnabled(value % 2 == 0);
        break;
    case 4:
        parent->setLayoutDirection(value % 2 == 0 ? Qt::LeftToRight : Qt::RightToLeft);
        break;
    case 5:
        parent->resize(900 + static_cast<int>(value % 300), 300 + static_cast<int>(value % 200));
        break;
    default:
        view->drawFrame->setVisible(value % 4 != 0);
        break;
    }
}

void TestHostLooks::otherwiseTheFrameIsPlain()
{
    const QStringList styles = QStyleFactory::keys();
    for (quint32 seed = 1; seed <= 25; ++seed) {
        random.seed(seed);
        qorvexgraph window;
        QWidget parents[2];
        bargraph *views[] = {new bargraph(&window), new PlainView(&window)};
        for (int i = 0; i < 2; ++i) {
            auto *layout = new QVBoxLayout(&parents[i]);
            layout->addWidget(views[i]);
            dress(views[i]);
            parents[i].setAttribute(Qt::WA_DontShowOnScreen);
            parents[i].resize(900, 420);
            parents[i].show();
        }
        QStringList done;
        for (int step = 0; step < 20; ++step) {
            const quint32 what = random.bounded(9u);
            const quint32 value = random.generate();
            const QString text = sheet();
            done +=
                QString::number(what) + QLatin1Char(' ') + QString::number(value) + QLatin1Char(' ') + text;
            if (what == 7)
                qApp->setStyleSheet(text);
            if (what == 8)
                QApplication::setStyle(
                    styles.at(static_cast<int>(value % static_cast<quint32>(styles.size()))));
            for (int i = 0; i < 2 && what < 7; ++i)
                change(&parents[i], views[i], what, value, text);
            QCoreApplication::processEvents();
            const QByteArray which = "seed " + QByteArray::number(seed) + '\n' + done.join('\n').toUtf8();
            const auto measuresAreEqual = [&views] {
                return measuresOf(views[0]->drawFrame) == measuresOf(views[1]->drawFrame);
            };
            const auto picturesAreEqual = [&parents] {
                return parents[0].grab().toImage() == parents[1].grab().toImage();
            };
            // One may be resized a turn of the event loop after the other.
            QVERIFY2(QTest::qWaitFor(measuresAreEqual), which);
            QVERIFY2(QTest::qWaitFor(picturesAreEqual), which);
        }
        qApp->setStyleSheet(QString());
    }
}

PADSCOPE_TESTS(TestHostLooks);
#include "tst_hostlooks.moc"
