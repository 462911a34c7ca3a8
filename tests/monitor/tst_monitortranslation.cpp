#include <memory>

#include <QCheckBox>
#include <QHeaderView>
#include <QTest>
#include <QTranslator>

#include "monitor/monitorview.h"
#include "support/tests.h"

namespace {

// Knows every text of the context "monitor", also those that must not be asked for.
class MonitorTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (qstrcmp(context, "monitor") != 0)
            return {};
        asked.append(source);
        return qstrcmp(source, "Unknown: %1") == 0 ? QString("Unbekannt %1 (%1)") : "xx" + QString(source);
    }
    mutable QStringList asked;
};

} // namespace

/// Which texts of the tab are translated, and which are not.
class MonitorTranslation : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void controls();
    void penNames_data();
    void penNames();
    void rowFormatsAreNotTranslated();
    void nothingElseIsAskedFor();

private:
    std::unique_ptr<MonitorTranslator> translator;
};

void MonitorTranslation::init()
{
    translator = std::make_unique<MonitorTranslator>();
    QVERIFY(QCoreApplication::installTranslator(translator.get()));
}

void MonitorTranslation::cleanup()
{
    QCoreApplication::removeTranslator(translator.get());
}

void MonitorTranslation::controls()
{
    MonitorView monitorView;
    QStringList labels;
    const auto children = monitorView.view->findChildren<QLabel *>();
    for (const QLabel *label : children) {
        if (label != monitorView.view->lastRowLabel)
            labels.append(label->text());
    }
    QCOMPARE(labels, (QStringList{"xxFast Computer", "xxSlow Computer", "Font"}));
    QCOMPARE(monitorView.view->logCheckBox->text(), QString("xxLog to file"));
    QCOMPARE(monitorView.view->model->headerData(0, Qt::Horizontal).toString(), QString("xxData"));
}

void MonitorTranslation::penNames_data()
{
    addColumns<QByteArray, QString>("bytes", "row");
    addRow("teacher", QByteArray("09 a2 00 0000 0100 0200"),
           "Q:              1     Button:            2 Pen:        xxTeacher");
    addRow("student", QByteArray("09 a2 00 0100 0100 0200"),
           "Q:              1     Button:            2 Pen:        xxStudent");
    addRow("unknown", QByteArray("09 a2 00 0200 0100 0200"),
           "Q:              1     Button:            2 Pen:        Unbekannt 2 (2)");
}

void MonitorTranslation::penNames()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, row);
    MonitorView monitorView;
    monitorView.send(hex(bytes));
    QCOMPARE(monitorView.rows(), QStringList{row});
}

void MonitorTranslation::rowFormatsAreNotTranslated()
{
    MonitorView monitorView;
    monitorView.send(hex("34 77 0c 64 00"));
    monitorView.send(hex("0e 2f 03"));
    QCOMPARE(monitorView.rows(), (QStringList{"Raw ADC: 100Voltage: 0.488V",
                                              "Q: Flag  0 Pass  0 AvQ     0 MinQ     0 MaxQ     0"}));
}

void MonitorTranslation::nothingElseIsAskedFor()
{
    MonitorView monitorView;
    for (const char *report : {"28 2f 01", "28 2f 02", "0e 2f 03", "0a 2f 04", "10 2f 05", "19 2f 06",
                               "28 68", "34 77 0c", "1a a3", "1f a4", "00 21"})
        monitorView.send(hex(report));
    QCOMPARE(monitorView.rows().size(), 11);
    translator->asked.sort();
    QCOMPARE(translator->asked, (QStringList{"Data", "Fast Computer", "Log to file", "Slow Computer"}));
}

PADSCOPE_TESTS(MonitorTranslation);
#include "tst_monitortranslation.moc"
