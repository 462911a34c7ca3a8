#include <QDebug>
#include <QRandomGenerator>
#include <QStyleFactory>

#include "bargraph/picture.h"
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

/// A view with bars to show, within a widget of the host's.
class HostedView
{
public:
    explicit HostedView(bargraph *shown)
        : view(shown)
    {
        (new QVBoxLayout(&parent))->addWidget(view);
        _DataPacket packet = packetOf(signalReport(
            {"3000", "-3000", "3400", "-3500", "2500", "-100", "5", "-5", "0", "7000", "-7000"}));
        view->Display(&packet);
        parent.setAttribute(Qt::WA_DontShowOnScreen);
        parent.resize(900, 420);
        parent.show();
    }

    QFrame *frame() const { return qobject_cast<QFrame *>(view->layout()->itemAt(1)->widget()); }

    QString measures() const
    {
        QString text;
        QDebug(&text) << frame()->geometry() << frame()->frameRect() << frame()->contentsRect()
                      << frame()->sizeHint() << frame()->minimumSizeHint() << frame()->frameStyle()
                      << frame()->frameWidth() << frame()->lineWidth();
        return text;
    }

    QPalette palette(quint32 colour) const
    {
        QPalette changed = parent.palette();
        changed.setColor(QPalette::WindowText, QColor(QRgb(colour)));
        return changed;
    }

    QWidget parent;
    bargraph *const view;
};

/// What a host does with its widgets, given a random number and some of the rules.
using Change = void (*)(HostedView &hosted, quint32 value, const QString &sheet);
constexpr Change changes[] = {
    [](HostedView &hosted, quint32, const QString &sheet) { hosted.parent.setStyleSheet(sheet); },
    [](HostedView &hosted, quint32 value, const QString &) {
        hosted.parent.setPalette(hosted.palette(value));
    },
    [](HostedView &hosted, quint32 value, const QString &) {
        hosted.view->setPalette(hosted.palette(value));
    },
    [](HostedView &hosted, quint32 value, const QString &) { hosted.parent.setEnabled(value % 2 == 0); },
    [](HostedView &hosted, quint32 value, const QString &) {
        hosted.parent.setLayoutDirection(value % 2 == 0 ? Qt::LeftToRight : Qt::RightToLeft);
    },
    [](HostedView &hosted, quint32 value, const QString &) {
        hosted.parent.resize(900 + static_cast<int>(value % 300), 300 + static_cast<int>(value % 200));
    },
    [](HostedView &hosted, quint32 value, const QString &) { hosted.frame()->setVisible(value % 4 != 0); },
    [](HostedView &, quint32, const QString &sheet) { qApp->setStyleSheet(sheet); },
    [](HostedView &, quint32 value, const QString &) {
        const QStringList styles = QStyleFactory::keys();
        QApplication::setStyle(styles.at(static_cast<int>(value % quint32(styles.size()))));
    },
};

constexpr quint32 firstOfTheApplication = 7;

/// Some of the rules, or none.
QString randomSheet(QRandomGenerator &random)
{
    QString text;
    for (const char *rule : rules) {
        if (random.bounded(6) == 0)
            text += QString(rule) + ' ';
    }
    return random.bounded(3) == 0 ? QString() : text;
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
            QTest::addRow("%s: %s", where, background) << QString(background) << QString(where);
    }
}

void TestHostLooks::noBackgroundHidesThePicture()
{
    QFETCH(QString, background);
    QFETCH(QString, where);
    const auto picture = [](const HostedView &hosted) {
        hosted.view->layout()->activate();
        hosted.view->layout()->setEnabled(false); // a sheet may change the controls' heights
        hosted.frame()->setGeometry(10, 50, 500, 360);
        QImage image(900, 420, QImage::Format_RGB32);
        image.fill(Qt::magenta);
        hosted.view->render(&image);
        return image.copy(10, 50, 500, 360);
    };
    FakeWindow window;
    const QImage expected = picture(HostedView(new bargraph(&window)));
    QCOMPARE(expected.pixelColor(0, 0), QColor(Qt::black));

    if (where == "the application, at first")
        qApp->setStyleSheet(background);
    HostedView hosted(new bargraph(&window));
    if (where == "the application, later")
        qApp->setStyleSheet(background);
    if (where == "the window")
        hosted.parent.setStyleSheet(background);
    QCOMPARE(picture(hosted), expected);
}

void TestHostLooks::otherwiseTheFrameIsPlain()
{
    for (quint32 seed = 1; seed <= 25; ++seed) {
        QRandomGenerator random(seed);
        FakeWindow window;
        HostedView hosted(new bargraph(&window));
        HostedView plain(new PlainView(&window));
        QStringList done;
        for (int step = 0; step < 20; ++step) {
            const quint32 what = random.bounded(quint32(std::size(changes)));
            const quint32 value = random.generate();
            const QString sheet = randomSheet(random);
            done += QStringLiteral("%1 %2 %3").arg(what).arg(value).arg(sheet);
            changes[what](hosted, value, sheet);
            if (what < firstOfTheApplication)
                changes[what](plain, value, sheet);
            QCoreApplication::processEvents();
            const QByteArray which = "seed " + QByteArray::number(seed) + '\n' + done.join('\n').toUtf8();
            // One may be resized a turn of the event loop after the other.
            QVERIFY2(QTest::qWaitFor([&] { return hosted.measures() == plain.measures(); }), which);
            QVERIFY2(QTest::qWaitFor(
                         [&] { return hosted.parent.grab().toImage() == plain.parent.grab().toImage(); }),
                     which);
        }
        qApp->setStyleSheet(QString());
    }
}

PADSCOPE_TESTS(TestHostLooks);
#include "tst_hostlooks.moc"
