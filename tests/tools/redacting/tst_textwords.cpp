#include "redacted.h"
#include "support/tests.h"
#include "textlines.h"

/// Which digits of a text are blanked.
class TextWordsTests : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void linesThatSpanReports();
    void linesWithoutTheirBeginning();
    void linesBehindALoss();
    void textsOfSeveralBoards();
    void linesWithoutEnd();
};

namespace {

const QByteArray line = "0bb8 05dc fa24 0000 0001 ffff *7fff 8000 0Ab9 1234 00c0 00d1\r\nO F: 07d0  !";
const QByteArray blankedLine = "0000 0000 0000 0000 0000 0000 *0000 0000 0000 0000 0000 0000\r\nO F: 07d0  !";

QByteArray blanked(redacting::TextLines &lines, const QByteArray &text)
{
    std::string bytes = text.toStdString();
    const bool isAnyBlanked = lines.blank(bytes);
    if (!isAnyBlanked && bytes != text.toStdString())
        qFatal("changed, and not told");
    return QByteArray::fromStdString(bytes);
}

QByteArray blanked(const QByteArray &text)
{
    redacting::TextLines lines;
    return blanked(lines, text);
}

} // namespace

void TextWordsTests::lines_data()
{
    addColumns<QByteArray, QByteArray>("text", "left");
    addRow("a line", line, blankedLine);
    addRow("two lines", line + line, blankedLine + blankedLine);
    addRow("behind other text", "board 1001 ready!" + line, "board 1001 ready!" + blankedLine);
    addRow("short words", QByteArray("bb8 5dc -1 +2 0x3 *1a\r"), QByteArray("000 000 -0 +0 0x0 *00\r"));
    addRow("three words behind something", QByteArray(">0bb8 05dc fa24 12 ok"),
           QByteArray(">0000 0000 0000 00 ok"));
    addRow("two words behind something", QByteArray(">0bb8 05dc ok"), QByteArray(">0bb8 05dc ok"));
    addRow("text", QByteArray("Padscope 2.1, build 1234 of 2026-11-22\r\nbad feed\n"),
           QByteArray("Padscope 2.1, build 1234 of 2026-11-22\r\n000 0000\n"));
    addRow("numbers", QByteArray("17\r\n4711!"), QByteArray("00\r\n0000!"));
    addRow("nothing", QByteArray(), QByteArray());
}

void TextWordsTests::lines()
{
    QFETCH(QByteArray, text);
    QTEST(blanked(text), "left");
}

void TextWordsTests::linesThatSpanReports()
{
    for (int first = 0; first <= line.size(); ++first) {
        for (int second = first; second <= line.size(); ++second) {
            redacting::TextLines lines;
            QByteArray left = blanked(lines, line.left(first));
            left += blanked(lines, line.mid(first, second - first));
            left += blanked(lines, line.mid(second));
            QCOMPARE(left, blankedLine);
        }
    }
}

void TextWordsTests::linesWithoutTheirBeginning()
{
    const int label = line.indexOf(':');
    for (int first = 0; first <= label; ++first)
        QCOMPARE(blanked(line.mid(first)), blankedLine.mid(first));
    // Nobody knows that this is a frequency.
    QCOMPARE(blanked(line.mid(label + 1)), QByteArray(" 0000  !"));
}

/// What comes behind it is not taken for the end of the line before.
void TextWordsTests::linesBehindALoss()
{
    redacting::Redactor redactor;
    const QByteArray header = fromHex("0b32");
    QCOMPARE(redacted(redactor, report(header + "Hello", 0)).payload, header + "Hello");
    QCOMPARE(redacted(redactor, report(header + "1a2b 3c4d", 1)).payload, header + "1a2b 3c4d");
    QCOMPARE(redacted(redactor, report(header + "1a2b 3c4d", 3)).payload, header + "0000 0000");
}

void TextWordsTests::textsOfSeveralBoards()
{
    redacting::Redactor redactor;
    const QByteArray header = fromHex("0632");
    const QByteArray otherType = fromHex("0677");
    QCOMPARE(redacted(redactor, report(header + "Hell", 0)).payload, header + "Hell");
    QCOMPARE(redacted(redactor, report(header + "1a2b", 1, 1002)).payload, header + "0000");
    QCOMPARE(redacted(redactor, report(otherType + "1a2b", 2)).payload, otherType + "0000");
    QCOMPARE(redacted(redactor, report(header + "1a2b", 3)).payload, header + "1a2b");
}

/// Of a line that goes on and on the last 74 characters decide.
void TextWordsTests::linesWithoutEnd()
{
    redacting::TextLines lines;
    blanked(lines, "Hello");
    QCOMPARE(blanked(lines, QByteArray(74, ' ')), QByteArray(74, ' '));
    QCOMPARE(blanked(lines, "1a2b"), QByteArray("0000"));
}

PADSCOPE_TESTS(TextWordsTests);
#include "tst_textwords.moc"
