#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include "qlineupdownedit.h"
#include "support/capturedoutput.h"
#include "support/driverlibrary.h"
#include "support/tests.h"
#include "support/toolwindow.h"

/// What crosses into the tool from files that it does not trust.
class Trust : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QSettings("Corvane", "qorvexgraph").clear(); }
    void libraryOfTheCurrentFolderIsNotLoaded();
    void historyIsNotSent();
    void familyStaysInItsRule();
    void logNeverLeavesItsFolder();
};

void Trust::libraryOfTheCurrentFolderIsNotLoaded()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(PADSCOPE_FAKE_DRIVERS "/complete"));
    QVERIFY(QFile::exists("liborvexboardex.so.1"));
    ToolWindow tool;
    CapturedOutput errors(stderr);
    tool.window.AttachHardware();
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!DriverLibrary::isLoaded());
    QVERIFY(errors.text().contains("liborvexboardex.so.1"));
    tool.window.close();
}

// What the settings put into the command line waits there until the user sends it.
void Trust::historyIsNotSent()
{
    QSettings("Corvane", "qorvexgraph").setValue("history/0", ":ERASE");
    const DriverLibrary library("complete", {7});
    ToolWindow tool;
    QCOMPARE(tool.window.findChild<QLineUpDownEdit *>()->historyLines(), QStringList(":ERASE"));
    tool.window.AttachHardware();
    tool.window.close();
    const QStringList calls = library.takeCalls();
    QVERIFY(calls.contains("orvexAttach()"));
    QCOMPARE(calls.filter("ERASE"), QStringList());
}

// A family is part of a style sheet, and may stand there as anything; the tool and the host stay whole.
void Trust::familyStaysInItsRule()
{
    QSettings("Corvane", "qorvexgraph")
        .setValue("Monitor Font", "x\";} * {color: red;} QTreeView {font-family: \"y");
    const ToolWindow tool;
    QVERIFY(qApp->styleSheet().isEmpty());
    QVERIFY(tool.window.styleSheet().isEmpty());
    tool.monitorTab->AddData("A", "B");
    QCOMPARE(tool.rows().size(), 1);
}

void Trust::logNeverLeavesItsFolder()
{
    const QTemporaryDir home;
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(home.path()));
    {
        const ToolWindow tool;
        tool.monitorTab->LogToFile(true);
        tool.monitorTab->AddData("../../escaped.log", "/etc/escaped");
    }
    qputenv("HOME", before);
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList("qorvexgraph logs"));
    QCOMPARE(QDir(home.filePath("qorvexgraph logs")).entryList(QDir::Files).size(), 1);
}

PADSCOPE_TESTS(Trust);
#include "tst_trust.moc"
