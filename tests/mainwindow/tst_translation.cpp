#include <QLabel>
#include <QSettings>
#include <QTabWidget>

#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/driverlibrary.h"
#include "support/markingtranslator.h"
#include "support/tests.h"

/// Which texts of the window a translation changes, and in which context.
class TranslationTests : public QObject
{
    Q_OBJECT

private slots:
    void tabCaption();
    void firstStatusIsNotTranslated();
    void statusTexts_data();
    void statusTexts();
    void keysOfTheHistory();
    void otherKeysAreNotTranslated();
};

void TranslationTests::tabCaption()
{
    const MarkingTranslator translator;
    const qorvexgraph window;
    QCOMPARE(window.tabs->tabText(window.tabs->indexOf(window.monitorView)),
             QStringLiteral("{qorvexgraph: Monitor}"));
}

void TranslationTests::firstStatusIsNotTranslated()
{
    const MarkingTranslator translator;
    const qorvexgraph window;
    QCOMPARE(window.statusLabel->text(), QStringLiteral("Devices found"));
}

void TranslationTests::statusTexts_data()
{
    addColumns<QVector<int>, QString>("ids", "status");
    addRow("no board", QVector<int>{}, "{qorvexgraph: <i>No device found.</i>}");
    addRow("one board", QVector<int>{5}, "{qorvexgraph: <b>1 device found.</b>}");
    addRow("three boards", QVector<int>{5, 6, 7}, "{qorvexgraph: <b>3 devices found.</b>}");
}

void TranslationTests::statusTexts()
{
    QFETCH(QVector<int>, ids);
    QFETCH(QString, status);
    const DriverLibrary library("complete", ids);
    const MarkingTranslator translator;
    qorvexgraph window;
    window.AttachHardware();
    QCOMPARE(window.statusLabel->text(), status);
    window.close();
    // The mark's own text begins with a blank.
    QCOMPARE(window.statusLabel->text(), status + "{qorvexgraph:  <i>Paused</i>}");
}

void TranslationTests::keysOfTheHistory()
{
    QSettings store(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"));
    store.clear();
    store.setValue("history/0", "untranslated");
    store.setValue("{qorvexgraph: history/0}", "zero");
    store.setValue("{qorvexgraph: history/1}", "one");
    const MarkingTranslator translator;
    qorvexgraph window;
    QCOMPARE(window.commandLine->history, QList<QString>({"one", "zero"}));
    window.commandLine->addToHistory("two");
    window.close();
    QCOMPARE(store.value("{qorvexgraph: history/0}"), QVariant("two"));
    QCOMPARE(store.value("{qorvexgraph: history/2}"), QVariant("zero"));
    QCOMPARE(store.value("history/0"), QVariant("untranslated"));
}

void TranslationTests::otherKeysAreNotTranslated()
{
    QSettings store(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"));
    store.clear();
    const MarkingTranslator translator;
    qorvexgraph window;
    window.close();
    QCOMPARE(store.allKeys(), QStringList({"Log To File", "Monitor Font", "Monitor Font Size"}));
}

PADSCOPE_TESTS(TranslationTests);
#include "tst_translation.moc"
