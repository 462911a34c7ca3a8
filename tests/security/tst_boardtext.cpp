#include <QLabel>
#include <QTest>
#include <QTextDocument>
#include <QTreeView>

#include "bargraph.h"
#include "monitor/monitorview.h"
#include "support/tests.h"

/// What a board says is shown as it stands: nothing of it is markup, a file name, a style or a command.
class BoardText : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreNoMarkup_data();
    void rowsAreNoMarkup();
    void proximityIsNoMarkup_data();
    void proximityIsNoMarkup();
    void rowsAreNotInterpretedAsFormats();
    void noRowChangesTheStyle();
};

void BoardText::rowsAreNoMarkup_data()
{
    QTest::addColumn<QByteArray>("text");
    addRow("bold", QByteArray("<b>bold</b>"));
    addRow("a picture", QByteArray("<img src=\"/etc/hostname\">"));
    addRow("a link", QByteArray("<a href=\"file:///\">here</a>"));
    addRow("a document", QByteArray("<!DOCTYPE html><html><body>all</body></html>"));
    addRow("an entity", QByteArray("&lt;&amp;"));
}

void BoardText::rowsAreNoMarkup()
{
    QFETCH(QByteArray, text);
    MonitorView monitorView;
    monitorView.send(QByteArray("\x20\x32", 2) + text + '\n', QTime::currentTime().addSecs(1));
    // A line feed is no character that can be printed.
    QCOMPARE(monitorView.rows(), QStringList(QString::fromLatin1(text) + QLatin1Char('.')));
    QCOMPARE(monitorView.label(), QString::fromLatin1(text) + QLatin1Char('.'));
    QCOMPARE(monitorView.view->lastRowLabel->textFormat(), Qt::PlainText);
    QVERIFY(!monitorView.view->lastRowLabel->openExternalLinks());
    QVERIFY(monitorView.view->treeView->toolTip().isEmpty());
    const QModelIndex index = monitorView.view->model->index(0, 0);
    QVERIFY(!index.data(Qt::ToolTipRole).isValid());
    QVERIFY(!index.data(Qt::DecorationRole).isValid());
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
    MonitorView monitorView;
    bargraph *view = monitorView.window.barGraphView;
    view->proxChar = character;
    view->publish(packetOf({}));
    const QString shown = view->proxLabel->text();
    QCOMPARE(shown, QStringLiteral("Prox: ") + QLatin1Char(character));
    QVERIFY(!Qt::mightBeRichText(shown));
}

void BoardText::rowsAreNotInterpretedAsFormats()
{
    MonitorView monitorView;
    monitorView.send(QByteArray("\x20\x32%1 %2 %s %n\n", 14), QTime::currentTime().addSecs(1));
    QCOMPARE(monitorView.rows(), QStringList(QStringLiteral("%1 %2 %s %n.")));
}

void BoardText::noRowChangesTheStyle()
{
    MonitorView monitorView;
    const QString before = monitorView.view->styleSheet();
    monitorView.send(QByteArray("\x20\x32} * {background: url(/dev/zero)}\n", 35),
                     QTime::currentTime().addSecs(1));
    QCOMPARE(monitorView.rows(), QStringList(QStringLiteral("} * {background: url(/dev/zero)}.")));
    QCOMPARE(monitorView.view->styleSheet(), before);
}

PADSCOPE_TESTS(BoardText);
#include "tst_boardtext.moc"
