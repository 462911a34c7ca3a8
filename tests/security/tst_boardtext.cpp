#include <QLabel>
#include <QTextDocument>

#include "support/tests.h"
#include "support/toolwindow.h"

/// What a board says is shown as it stands: nothing of it is markup, a file name, a style or a command.
class BoardText : public QObject
{
    Q_OBJECT

private slots:
    void rowsShowTextAsItStands_data();
    void rowsShowTextAsItStands();
    void proximityIsNoMarkup_data();
    void proximityIsNoMarkup();
};

void BoardText::rowsShowTextAsItStands_data()
{
    QTest::addColumn<QString>("text");
    addRow("bold", "<b>bold</b>");
    addRow("a picture", "<img src=\"/etc/hostname\">");
    addRow("a link", "<a href=\"file:///\">here</a>");
    addRow("a document", "<!DOCTYPE html><html><body>all</body></html>");
    addRow("an entity", "&lt;&amp;");
    addRow("formats", "%1 %2 %s %n");
    addRow("a style", "} * {background: url(/dev/zero)}");
}

void BoardText::rowsShowTextAsItStands()
{
    QFETCH(QString, text);
    const ToolWindow tool;
    const QString styleBefore = tool.monitorTab->styleSheet();
    tool.send("\x20\x32" + text.toLatin1() + '\n', QTime::currentTime().addSecs(1));
    // A line feed is no character that can be printed.
    QCOMPARE(tool.rows(), QStringList(text + '.'));
    QCOMPARE(tool.monitorTab->styleSheet(), styleBefore);
    const auto *view = tool.monitorTab->findChild<QTreeView *>();
    QVERIFY(view->toolTip().isEmpty());
    const QModelIndex index = view->model()->index(0, 0);
    QVERIFY(!index.data(Qt::ToolTipRole).isValid());
    QVERIFY(!index.data(Qt::DecorationRole).isValid());
    const QList<QLabel *> labels = tool.monitorTab->findChildren<QLabel *>();
    const auto lastRow = std::find_if(labels.begin(), labels.end(),
                                      [&](const QLabel *label) { return label->text() == text + '.'; });
    QVERIFY(lastRow != labels.end());
    QCOMPARE((*lastRow)->textFormat(), Qt::PlainText);
    QVERIFY(!(*lastRow)->openExternalLinks());
}

void BoardText::proximityIsNoMarkup_data()
{
    QTest::addColumn<char>("character");
    addRow("less than", '<');
    addRow("greater than", '>');
    addRow("ampersand", '&');
    addRow("per cent", '%');
}

// One character behind "Prox: " is too little for a tag, and the label guesses by tags.
void BoardText::proximityIsNoMarkup()
{
    QFETCH(char, character);
    const ToolWindow tool;
    // A voltage, and a second later a line of 74 characters with the character behind its first line feed.
    _DataPacket voltage = packetOf(hex("34 77 0c fa 00"), noon);
    tool.barsTab->Display(&voltage);
    const QByteArray line = QByteArray("\n") + character + QByteArray(71, ' ') + '!';
    _DataPacket text = packetOf("\x20\x32" + line, noon.addSecs(1));
    tool.barsTab->Display(&text);
    const QList<QLabel *> labels = tool.barsTab->findChildren<QLabel *>();
    const QString shown = QString("Prox: ") + character;
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [&](const QLabel *label) { return label->text() == shown; }));
    QVERIFY(!Qt::mightBeRichText(shown));
}

PADSCOPE_TESTS(BoardText);
#include "tst_boardtext.moc"
