#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

#include "host/hostrun.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/capturedoutput.h"
#include "support/driverlibrary.h"
#include "support/tests.h"

/// What crosses into the tool from files that it does not trust.
class Trust : public QObject
{
    Q_OBJECT

private slots:
    void libraryOfTheCurrentFolderIsNotLoaded();
    void pluginFolderWithoutPlugins();
    void historyIsNotSent();
    void familyStaysInItsRule();
    void logNeverLeavesItsFolder();
    void scenarioThatIsNone();
};

void Trust::libraryOfTheCurrentFolderIsNotLoaded()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QStringLiteral(PADSCOPE_FAKE_DRIVERS "/complete")));
    QVERIFY(QFile::exists(QStringLiteral("liborvexboardex.so.1")));
    {
        qorvexgraph window;
        CapturedOutput errors(stderr);
        window.AttachHardware();
        QVERIFY(!DriverLibrary::isLoaded());
        QVERIFY(errors.text().contains("liborvexboardex.so.1"));
        window.close();
    }
    QVERIFY(QDir::setCurrent(before));
}

void Trust::pluginFolderWithoutPlugins()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("libplugin.so")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\x7f"
               "ELF and nothing more");
    file.close();
    const Run result = run({QStringLiteral("--plugins"), folder.path(), QStringLiteral("--list")});
    QCOMPARE(result.status, 2);
    QVERIFY2(result.errors.value(0).contains(file.fileName()), qPrintable(result.errors.join('\n')));
}

// What the settings put into the command line waits there until the user sends it.
void Trust::historyIsNotSent()
{
    QSettings("Corvane", "qorvexgraph").setValue("history/0", ":ERASE");
    const DriverLibrary library("complete", {7});
    qorvexgraph window;
    QCOMPARE(window.commandLine->historyLines(), QStringList(":ERASE"));
    window.AttachHardware();
    QCOMPARE(library.takeCalls().filter("ERASE"), QStringList());
    window.close();
    QCOMPARE(library.takeCalls().filter("ERASE"), QStringList());
    QSettings("Corvane", "qorvexgraph").clear();
}

// A family is part of a style sheet, and may stand there as anything; the tool and the host stay whole.
void Trust::familyStaysInItsRule()
{
    QSettings("Corvane", "qorvexgraph")
        .setValue("Monitor Font", "x\";} * {color: red;} QTreeView {font-family: \"y");
    {
        qorvexgraph window;
        QVERIFY(qApp->styleSheet().isEmpty());
        QVERIFY(window.styleSheet().isEmpty());
        window.monitorView->AddData("A", "B");
        QCOMPARE(window.monitorView->model->rowCount(), 1);
    }
    QSettings("Corvane", "qorvexgraph").clear();
}

void Trust::logNeverLeavesItsFolder()
{
    const QTemporaryDir home;
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(home.path()));
    {
        qorvexgraph window;
        window.monitorView->LogToFile(true);
        window.monitorView->AddData("../../escaped.log", "/etc/escaped");
    }
    qputenv("HOME", before);
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList("qorvexgraph logs"));
    QCOMPARE(QDir(home.filePath("qorvexgraph logs")).entryList(QDir::Files).size(), 1);
}

void Trust::scenarioThatIsNone()
{
    const Run result = run({QStringLiteral("--plugins"), QStringLiteral(PADSCOPE_PLUGIN_FOLDER),
                            QStringLiteral("--simulate=/etc/hostname"), QStringLiteral("--list")});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.errors.size(), 1);
    QVERIFY2(result.errors.value(0).contains("/etc/hostname"), qPrintable(result.errors.join('\n')));
}

PADSCOPE_TESTS(Trust);
#include "tst_trust.moc"
