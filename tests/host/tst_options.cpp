#include <QCommandLineParser>
#include <QProcess>

#include "options.h"
#include "support/datalines.h"
#include "support/tests.h"

/// What the command line asks for, by the lines of options.txt.
class OptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
};

namespace {

/// What is not at its default.
QString textOf(const Options &options)
{
    QStringList tabs;
    for (const TabStop &stop : options.tabs)
        tabs += QString("%1 %2 ms").arg(stop.caption).arg(stop.durationMs);
    const QVector<QPair<QString, QString>> values{
        {"plugins", options.pluginFolders.join(", ")},
        {"list", options.list ? "yes" : ""},
        {"open", options.openId},
        {"driver", options.driver},
        {"simulate", options.simulate ? "yes" : ""},
        {"scenario", options.scenario},
        {"list scenarios", options.listScenarios ? "yes" : ""},
        {"type", options.typedLines.join(", ")},
        {"tabs", tabs.join(", ")},
        {"for", options.closeAfterMs ? QString::number(*options.closeAfterMs) + " ms" : ""},
        {"snapshot", options.snapshotFolder},
        {"rows", options.rows ? "yes" : ""},
        {"translation", options.translation},
        {"needs a tool", options.needsTool() ? "yes" : ""},
        {"scripted", options.isScripted() ? "yes" : ""},
    };
    QStringList texts;
    for (const auto &[name, value] : values)
        texts += value.isEmpty() ? QStringList() : QStringList(name + ": " + value);
    return texts.join("; ");
}

} // namespace

void OptionsTest::reads_data()
{
    addColumns<QString, QString>("arguments", "result");
    for (const QStringList &line : dataLines(OPTIONS_FILE, 3, 3))
        addRow(qPrintable(line[0]), line[1], line[2]);
}

void OptionsTest::reads()
{
    QFETCH(QString, arguments);
    QCommandLineParser parser;
    declareOptions(parser);
    Options options;
    const QString error = readOptions(parser, QProcess::splitCommand("tendro-host " + arguments), options);
    QTEST(error.isEmpty() ? textOf(options) : error, "result");
}

PADSCOPE_TESTS(OptionsTest);
#include "tst_options.moc"
