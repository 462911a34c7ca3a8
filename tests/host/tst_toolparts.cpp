#include "snapshots.h"
#include "support/tests.h"
#include "toolparts.h"

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
#include <QTranslator>
#include <QTreeWidget>
#include <sys/resource.h>

namespace {

/// Keeps the keys that reach it.
class KeyRecorder : public QLineEdit
{
public:
    QStringList keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        keys += QStringLiteral("%1 %2").arg(event->key(), 0, 16).arg(int(event->modifiers()), 0, 16);
        QLineEdit::keyPressEvent(event);
    }
};

/// Translates "Second" in the context of dialogs.
class FrenchOfDialogs : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/,
                      int /*n*/) const override
    {
        const bool isKnown = qstrcmp(context, "QDialog") == 0 && qstrcmp(text, "Second") == 0;
        return isKnown ? QStringLiteral("&Deuxième") : QString();
    }
};

/// While in scope no file may have more than 10 bytes, as on a disk that is full.
class SmallFiles
{
public:
    SmallFiles()
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{10, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        signal_ = signal(SIGXFSZ, SIG_IGN);
    }
    ~SmallFiles()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        signal(SIGXFSZ, signal_);
    }
    SmallFiles(const SmallFiles &) = delete;
    SmallFiles &operator=(const SmallFiles &) = delete;

private:
    rlimit before_{};
    void (*signal_)(int);
};

} // namespace

class ToolPartsTest : public QObject
{
    Q_OBJECT

private slots:
    void findsLineEdit();
    void passesOverLineEditsThatTakeNoText();
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

void ToolPartsTest::findsLineEdit()
{
    QWidget tool;
    QVERIFY(!lineEditOf(tool));
    auto *spinBox = new QSpinBox(&tool);
    auto *comboBox = new QComboBox(&tool);
    comboBox->setEditable(true);
    QVERIFY(!lineEditOf(tool));
    auto *line = new QLineEdit(&tool);
    QCOMPARE(lineEditOf(tool), line);
    QVERIFY(spinBox->findChild<QLineEdit *>());
}

void ToolPartsTest::passesOverLineEditsThatTakeNoText()
{
    QWidget tool;
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
    typeLine(line, QStringLiteral(":aB1"));
    QCOMPARE(line.text(), QStringLiteral(":aB1"));
    QCOMPARE(returned.count(), 1);
    // ':' 'a' 'B' '1' and Return; 0x2000000 is Shift
    QCOMPARE(line.keys.join(QLatin1Char(',')), QStringLiteral("3a 0,41 0,42 2000000,31 0,1000004 0"));
}

void ToolPartsTest::typesBeyondLatin1()
{
    QLineEdit line;
    const QString text = QString::fromUtf8("\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80");
    typeLine(line, text);
    QCOMPARE(line.text(), text);
}

void ToolPartsTest::readsCaptionsWithoutMarks()
{
    QTabWidget tabs;
    tabs.addTab(new QWidget, QStringLiteral("&Bar Graph"));
    tabs.addTab(new QWidget, QStringLiteral("Q&&A"));
    QCOMPARE(tabCaptions(tabs), QStringList({QStringLiteral("Bar Graph"), QStringLiteral("Q&A")}));
}

void ToolPartsTest::findsTabsByEitherCaption()
{
    FrenchOfDialogs french;
    QCoreApplication::installTranslator(&french);
    QDialog tool;
    auto *tabs = new QTabWidget(new QWidget(&tool));
    tabs->addTab(new QWidget, QStringLiteral("Première"));
    tabs->addTab(new QWidget, QStringLiteral("&Deuxième"));
    QCOMPARE(indexOfTab(*tabs, QStringLiteral("Première")), 0);
    QCOMPARE(indexOfTab(*tabs, QStringLiteral("Deuxième")), 1);
    QCOMPARE(indexOfTab(*tabs, QStringLiteral("Second")), 1);
    QCOMPARE(indexOfTab(*tabs, QStringLiteral("First")), -1);
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
    auto *list = new QListWidget(&tool);
    list->addItems({QStringLiteral("a"), QStringLiteral("b\r\nc")});
    auto *tree = new QTreeWidget(&tool);
    tree->setColumnCount(2);
    tree->addTopLevelItem(new QTreeWidgetItem({QStringLiteral("d"), QStringLiteral("e")}));
    QCOMPARE(itemRows(tool),
             QStringList({QStringLiteral("a"), QStringLiteral("b  c"), QStringLiteral("d\te")}));
}

void ToolPartsTest::leavesOutComboBoxesAndHeaders()
{
    QWidget tool;
    auto *box = new QComboBox(&tool);
    box->addItem(QStringLiteral("choice"));
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
    addRow("umlauts",
           QString::fromUtf8("\xc3\x9c"
                             "bersicht"),
           QString::fromUtf8("\xc3\xbc"
                             "bersicht"));
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
        page->setStyleSheet(QStringLiteral("background: ") + QLatin1String(caption));
        tabs.addTab(page, QLatin1String(caption));
    }
    tabs.setCurrentIndex(1);
    tabs.resize(200, 150);
    tabs.show();
    const QTemporaryDir folder;
    const QString inner = folder.filePath(QStringLiteral("new/inner"));
    QCOMPARE(prepareSnapshotFolder(inner), QString());
    QCOMPARE(saveSnapshots(tabs, &tabs, inner), QString());
    QCOMPARE(
        QDir(inner).entryList(QDir::Files),
        QStringList({QStringLiteral("blue.png"), QStringLiteral("red-2.png"), QStringLiteral("red.png")}));
    QCOMPARE(tabs.currentIndex(), 1);
    const QImage red(inner + QStringLiteral("/red.png"));
    QCOMPARE(red.size(), QSize(200, 150));
    QCOMPARE(red.pixelColor(100, 100), QColor(255, 0, 0));
    QCOMPARE(QImage(inner + QStringLiteral("/blue.png")).pixelColor(100, 100), QColor(0, 0, 255));
}

void ToolPartsTest::tellsWhatCannotBeWritten()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(prepareSnapshotFolder(file.fileName()),
             QStringLiteral("--snapshot %1: Not a directory").arg(file.fileName()));
    QWidget window;
    QCOMPARE(saveSnapshots(window, nullptr, file.fileName()),
             file.fileName() + QStringLiteral("/window.png: can't be written: Not a directory"));
}

void ToolPartsTest::leavesNothingWhereThereIsNoRoom()
{
    const QTemporaryDir folder;
    QWidget window;
    window.resize(300, 200);
    const QString picture = folder.filePath(QStringLiteral("window.png"));
    const auto refusal = picture + QStringLiteral(": can't be written: File too large");
    {
        const SmallFiles smallFiles;
        QCOMPARE(saveSnapshots(window, nullptr, folder.path()), refusal);
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());

    QCOMPARE(saveSnapshots(window, nullptr, folder.path()), QString());
    {
        const SmallFiles smallFiles;
        QCOMPARE(saveSnapshots(window, nullptr, folder.path()), refusal);
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList(QStringLiteral("window.png")));
    QCOMPARE(QImage(picture).size(), QSize(300, 200));
}

PADSCOPE_TESTS(ToolPartsTest);
#include "tst_toolparts.moc"
