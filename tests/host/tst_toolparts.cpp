#include <csignal>
#include <QComboBox>
#include <QDialog>
#include <QFontComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeWidget>
#include <sys/resource.h>

#include "snapshots.h"
#include "support/markingtranslator.h"
#include "support/tests.h"
#include "toolparts.h"

namespace {

/// Keeps the keys that reach it.
class KeyRecorder : public QLineEdit
{
public:
    QStringList keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        keys += QString("%1 %2").arg(event->key(), 0, 16).arg(int(event->modifiers()), 0, 16);
        QLineEdit::keyPressEvent(event);
    }
};

/// As on a full disk: no file may have more than 10 bytes.
QString saveWithoutRoom(QWidget &window, const QString &folder)
{
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const QString error = saveSnapshots(window, nullptr, folder);
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, handler);
    return error;
}

} // namespace

class ToolPartsTest : public QObject
{
    Q_OBJECT

private slots:
    void findsLineEditThatTakesText();
    void typesKeyByKey();
    void typesBeyondLatin1();
    void readsCaptionsWithoutMarks();
    void findsTabsByEitherCaption();
    void findsToolItself();
    void listsRowsOfAllViews();
    void leavesOutComboBoxesAndHeaders();
    void namesSnapshots_data();
    void namesSnapshots();
    void savesOneFilePerTab();
    void tellsWhatCannotBeWritten();
    void leavesNothingWhereThereIsNoRoom();
};

void ToolPartsTest::findsLineEditThatTakesText()
{
    QWidget tool;
    QVERIFY(!lineEditOf(tool));
    new QSpinBox(&tool);
    (new QComboBox(&tool))->setEditable(true);
    (new QLineEdit(&tool))->setReadOnly(true);
    (new QLineEdit(&tool))->setEnabled(false);
    QVERIFY(!lineEditOf(tool));
    auto *line = new QLineEdit(&tool);
    QCOMPARE(lineEditOf(tool), line);
}

void ToolPartsTest::typesKeyByKey()
{
    KeyRecorder line;
    QSignalSpy returned(&line, &QLineEdit::returnPressed);
    typeLine(line, ":aB1");
    QCOMPARE(line.text(), QString(":aB1"));
    QCOMPARE(returned.count(), 1);
    // ':' 'a' 'B' '1' and Return; 0x2000000 is Shift
    QCOMPARE(line.keys, QStringList({"3a 0", "41 0", "42 2000000", "31 0", "1000004 0"}));
}

void ToolPartsTest::typesBeyondLatin1()
{
    QLineEdit line;
    typeLine(line, "ä€😀");
    QCOMPARE(line.text(), QString("ä€😀"));
}

void ToolPartsTest::readsCaptionsWithoutMarks()
{
    QTabWidget tabs;
    tabs.addTab(new QWidget, "&Bar Graph");
    tabs.addTab(new QWidget, "Q&&A");
    QCOMPARE(tabCaptions(tabs), QStringList({"Bar Graph", "Q&A"}));
}

void ToolPartsTest::findsTabsByEitherCaption()
{
    const MarkingTranslator translator;
    QDialog tool;
    auto *tabs = new QTabWidget(new QWidget(&tool));
    tabs->addTab(new QWidget, "{QDialog: &First}");
    tabs->addTab(new QWidget, "{QDialog: &Second}");
    QCOMPARE(indexOfTab(*tabs, "{QDialog: First}"), 0);
    QCOMPARE(indexOfTab(*tabs, "{QDialog: Second}"), 1);
    QCOMPARE(indexOfTab(*tabs, "Second"), 1);
    QCOMPARE(indexOfTab(*tabs, "Third"), -1);
}

void ToolPartsTest::findsToolItself()
{
    QTabWidget tool;
    QCOMPARE(tabsOf(tool), &tool);
    QLineEdit line;
    QCOMPARE(lineEditOf(line), &line);
    QVERIFY(!tabsOf(line));
}

void ToolPartsTest::listsRowsOfAllViews()
{
    QWidget tool;
    (new QListWidget(&tool))->addItems({"a", "b\r\nc"});
    auto *tree = new QTreeWidget(&tool);
    tree->setColumnCount(2);
    tree->addTopLevelItem(new QTreeWidgetItem({"d", "e"}));
    QCOMPARE(itemRows(tool), QStringList({"a", "b  c", "d\te"}));
}

void ToolPartsTest::leavesOutComboBoxesAndHeaders()
{
    QWidget tool;
    auto *box = new QComboBox(&tool);
    box->addItem("choice");
    new QFontComboBox(&tool);
    new QTreeWidget(&tool);
    QVERIFY(box->view());
    QCOMPARE(itemRows(tool), QStringList());
}

void ToolPartsTest::namesSnapshots_data()
{
    addColumns<QString, QString>("caption", "name");
    addRow("one word", "Monitor", "monitor");
    addRow("two words", "Bar Graph", "bar-graph");
    addRow("a path", "../../A b", "a-b");
    addRow("digits", "Tab 2", "tab-2");
    addRow("umlauts", "Übersicht", "übersicht");
    addRow("nothing usable", "?!", "tab");
}

void ToolPartsTest::namesSnapshots()
{
    QFETCH(QString, caption);
    QTEST(snapshotName(caption), "name");
}

void ToolPartsTest::savesOneFilePerTab()
{
    QTabWidget tabs;
    for (const char *caption : {"Red", "red", "Blue"}) {
        auto *page = new QLabel;
        page->setStyleSheet(QString("background: ") + caption);
        tabs.addTab(page, caption);
    }
    tabs.setCurrentIndex(1);
    tabs.resize(200, 150);
    tabs.show();
    const QTemporaryDir folder;
    const QString inner = folder.filePath("new/inner");
    QCOMPARE(prepareSnapshotFolder(inner), QString());
    QCOMPARE(saveSnapshots(tabs, &tabs, inner), QString());
    QCOMPARE(QDir(inner).entryList(QDir::Files), QStringList({"blue.png", "red-2.png", "red.png"}));
    QCOMPARE(tabs.currentIndex(), 1);
    const QImage red(inner + "/red.png");
    QCOMPARE(red.size(), QSize(200, 150));
    QCOMPARE(red.pixelColor(100, 100), QColor(255, 0, 0));
    QCOMPARE(QImage(inner + "/blue.png").pixelColor(100, 100), QColor(0, 0, 255));
}

void ToolPartsTest::tellsWhatCannotBeWritten()
{
    const QString file = "/proc/self/status";
    QCOMPARE(prepareSnapshotFolder(file), QString("--snapshot /proc/self/status: Not a directory"));
    QWidget window;
    QCOMPARE(saveSnapshots(window, nullptr, file),
             QString("/proc/self/status/window.png: can't be written: Not a directory"));
}

void ToolPartsTest::leavesNothingWhereThereIsNoRoom()
{
    const QTemporaryDir folder;
    QWidget window;
    window.resize(300, 200);
    const QString picture = folder.filePath("window.png");
    QCOMPARE(saveWithoutRoom(window, folder.path()), picture + ": can't be written: File too large");
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());

    QCOMPARE(saveSnapshots(window, nullptr, folder.path()), QString());
    QCOMPARE(saveWithoutRoom(window, folder.path()), picture + ": can't be written: File too large");
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("window.png"));
    QCOMPARE(QImage(picture).size(), QSize(300, 200));
}

PADSCOPE_TESTS(ToolPartsTest);
#include "tst_toolparts.moc"
