#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QRegularExpression>

#include "languages/clippedtexts.h"
#include "languages/speakinghost.h"
#include "replaybar.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"
#include "support/waitingpackets.h"

namespace {

/// Before the application is created.
[[maybe_unused]] const bool fixedFonts = qputenv("FONTCONFIG_FILE", PADSCOPE_FONTS);

/// Each text thirty times.
class LongTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *sourceText, const char *, int) const override
    {
        return QString::fromUtf8(sourceText).remove('&').repeated(30);
    }
};

QString clipped(const QWidget &window)
{
    return clippedTexts(window).join('\n');
}

/// The area that the bar graph paints, without its edge.
QImage paintedArea(QWidget &bars)
{
    const QList<QFrame *> frames = bars.findChildren<QFrame *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QFrame *frame : frames) {
        if (frame->frameShape() == QFrame::Box)
            return bars.grab(frame->geometry().adjusted(1, 1, -1, -1)).toImage();
    }
    qFatal("no frame");
}

/// Pixels between the rightmost one that is not black and the picture's right edge.
int freePixels(const QImage &picture)
{
    for (int free = 0; free < picture.width(); ++free) {
        for (int y = 0; y < picture.height(); ++y) {
            if (picture.pixelColor(picture.width() - 1 - free, y) != Qt::black)
                return free;
        }
    }
    return picture.width();
}

} // namespace

/// The tool in the host in each language, in one of the widest fonts: at the default size no text is clipped.
class FitTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void showsTabs_data() { languages(); }
    void showsTabs();
    void showsMeter_data() { languages(); }
    void showsMeter();
    void showsReplay_data() { languages(); }
    void showsReplay();
    void showsMenus_data() { languages(); }
    void showsMenus();
    void showsAbout_data() { languages(); }
    void showsAbout();
    void givesEachActionALetterOfItsOwn_data() { languages(); }
    void givesEachActionALetterOfItsOwn();
    void findsLongTexts();
    void findsALongMeter();
    void findsWhatLeavesItsParent();
    void findsWhatLiesOverAnother();

private:
    static void languages();

    SimulatedLibrary library_;
};

void FitTest::initTestCase()
{
    QApplication::setFont(QFont("Sans Serif", 10));
    QCOMPARE(QFontInfo(QApplication::font()).family(), QString("DejaVu Sans"));
}

void FitTest::languages()
{
    addColumns<QString>("language");
    for (const char *language : {"en", "de", "es", "fr", "ja", "zh_CN"})
        addRow(language, QString(language));
}

void FitTest::showsTabs()
{
    QFETCH(QString, language);
    Translators translators;
    translators.loadLanguage(language);
    SpeakingHost host("default");
    QCOMPARE(host.tabs->count(), 2);
    QCOMPARE(clipped(host.window), QString());

    host.type("?");
    // its widest text
    auto *prox = host.tabs->widget(0)->findChildren<QLabel *>().at(2);
    QTRY_VERIFY2(prox->text().size() > 6, qPrintable(prox->text()));
    QCOMPARE(clipped(host.window), QString());

    host.tabs->setCurrentIndex(1);
    QTRY_VERIFY(!itemRows(*host.tool).isEmpty());
    QCOMPARE(clipped(host.window), QString());

    host.window.closeTool();
    host.open();
    QCOMPARE(clipped(host.window), QString());
    QCOMPARE(host.window.size(), QSize(900, 700));
}

void FitTest::showsMeter()
{
    QFETCH(QString, language);
    Translators translators;
    translators.loadLanguage(language);
    SpeakingHost host("default");
    QVERIFY(QMetaObject::invokeMethod(host.tabs->widget(0), "volts"));
    const QImage picture = paintedArea(*host.tabs->widget(0));
    // Latin, Japanese or Chinese, three lines of at least 60 pixels
    QVERIFY(freePixels(picture) > 0);
    QVERIFY(freePixels(picture) < picture.width() - 57 - 60);
}

void FitTest::showsReplay()
{
    QFETCH(QString, language);
    Translators translators;
    translators.loadLanguage(language);
    SpeakingHost host(PADSCOPE_CAPTURE);
    QCOMPARE(clipped(host.window), QString());
    host.simulation.pauseReplay(true);
    host.type("?");
    QTRY_COMPARE(host.simulation.replay()->state, int(ORVEXSIM_REPLAY_PAUSED));
    const QLabel *state = host.window.findChild<ReplayBar *>()->findChildren<QLabel *>().last();
    QTRY_COMPARE(state->text(), "1x, " + QCoreApplication::translate("ReplayBar", "paused"));
    QCOMPARE(clipped(host.window), QString());
}

/// A menu is as wide as its texts need; it must fit beside the window's edge.
void FitTest::showsMenus()
{
    QFETCH(QString, language);
    Translators translators;
    translators.loadLanguage(language);
    SpeakingHost host("default");
    const QList<QMenu *> menus = host.window.findChildren<QMenu *>();
    QVERIFY(menus.size() >= 8);
    for (const QMenu *menu : menus)
        QVERIFY2(menu->sizeHint().width() < 900, qPrintable(menu->title()));
}

void FitTest::showsAbout()
{
    QFETCH(QString, language);
    Translators translators;
    translators.loadLanguage(language);
    SpeakingHost host("default");
    host.window.menuBar()->actions().last()->menu()->actions().first()->trigger();
    const auto *box = host.window.findChild<QMessageBox *>();
    QTRY_VERIFY(box->isVisible());
    QCOMPARE(clipped(*box), QString());
}

void FitTest::givesEachActionALetterOfItsOwn()
{
    QFETCH(QString, language);
    Translators translators;
    translators.loadLanguage(language);
    SpeakingHost host(PADSCOPE_CAPTURE);
    QList<QList<QAction *>> groups{host.window.menuBar()->actions()};
    const QList<QMenu *> menus = host.window.findChildren<QMenu *>();
    for (const QMenu *menu : menus)
        groups += menu->actions();
    QVERIFY(groups.size() >= 9);
    for (const QList<QAction *> &group : qAsConst(groups)) {
        QString letters;
        for (const QAction *action : group) {
            const QString text = action->text().remove("&&");
            const int mark = text.indexOf('&');
            if (mark >= 0)
                letters += text.at(mark + 1).toUpper();
            QVERIFY2(mark >= 0 || &group != &groups.first(), qPrintable(text));
        }
        for (const QChar letter : qAsConst(letters)) {
            QVERIFY2(letter.isUpper() && letter.unicode() < 0x100, qPrintable(letters));
            QVERIFY2(letters.count(letter) == 1, qPrintable(letters));
        }
    }
}

void FitTest::findsLongTexts()
{
    Translators translators;
    translators.install(std::make_unique<LongTranslator>());
    SpeakingHost host(PADSCOPE_CAPTURE);
    QStringList kinds;
    for (int tab = 0; tab < 2; ++tab) {
        host.tabs->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        const QStringList lines = clippedTexts(host.window);
        for (const QString &line : lines)
            kinds += line.section(' ', 0, 0) + ' ' + line.section('"', 1, 1).left(4);
    }
    kinds.sort();
    kinds.removeDuplicates();
    QCOMPARE(kinds.join(", "),
             QString("QCheckBox Clas, QCheckBox Lock, QCheckBox Log , QHeaderView Data, QLabel Fast, QLabel "
                     "Slow, QMenuBar &Adv, QMenuBar &Boa, QMenuBar &Rep, QMenuBar Help, QTabBar Bar , "
                     "QTabBar Moni, QToolButton Pads, ReportRates Repo, a "));
}

void FitTest::findsALongMeter()
{
    Translators translators;
    translators.install(std::make_unique<LongTranslator>());
    SpeakingHost host("default");
    QVERIFY(QMetaObject::invokeMethod(host.tabs->widget(0), "volts"));
    QCOMPARE(freePixels(paintedArea(*host.tabs->widget(0))), 0);
}

void FitTest::findsWhatLeavesItsParent()
{
    QWidget window;
    window.resize(200, 100);
    QLabel label("label", &window);
    label.setGeometry(150, 10, 100, 30);
    window.show();
    QCOMPARE(clipped(window), QString("\"label\" leaves its parent"));
}

void FitTest::findsWhatLiesOverAnother()
{
    QWidget window;
    window.resize(200, 100);
    QLabel label("label", &window);
    label.setGeometry(0, 10, 100, 30);
    QSlider slider(&window);
    slider.setGeometry(99, 39, 100, 30);
    window.show();
    QCOMPARE(clipped(window), QString("\"label\" lies over another"));
    slider.move(100, 39);
    QCOMPARE(clipped(window), QString());
}

PADSCOPE_TESTS(FitTest);
#include "tst_fit.moc"
