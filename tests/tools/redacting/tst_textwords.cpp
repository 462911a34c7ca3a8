#include <cctype>
#include <random>

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
    void proseThatSpansReports();
    void damagedLines();
    void randomLines();
    void linesWithoutTheirBeginning();
    void linesBehindALoss();
    void textsOfSeveralBoards();
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
    addRow("behind other text", "board ready!" + line, "board ready!" + blankedLine);
    addRow("short words", QByteArray("bb8 5dc -1 +2 0x3 *1a\r"), QByteArray("000 000 -0 +0 0x0 *00\r"));
    addRow("one word behind something", QByteArray(">0bb8 ok"), QByteArray(">0000 ok"));
    addRow("words beside other characters",
           QByteArray("bb8z 5dc,fa24\xE9"
                      "12345678_fg"),
           QByteArray("000z 000,0000\xE9"
                      "00000000_0g"));
    addRow("cut by a letter, a line feed behind it", QByteArray("0bb8 05dc zz  \r\nO F: 07d0  !"),
           QByteArray("0000 0000 zz  \r\nO F: 07d0  !"));
    addRow("line feeds between words", QByteArray("0bb8\n05dc\r\nfa24\n"),
           QByteArray("0000\n0000\r\n0000\n"));
    addRow("no label of a frequency", QByteArray("\nO F; 07d0\nO: 07d0\nO F: 07d01234"),
           QByteArray("\nO 0; 0000\nO: 0000\nO F: 07d00000"));
    addRow("a line that ends behind the label", QByteArray("\nO F: !0bb8"), QByteArray("\nO F: !0000"));
    addRow("words", QByteArray("Hello board, ready\r\n"), QByteArray("Hello board, ready\r\n"));
    addRow("letters of numbers", QByteArray("bad feed\nfzzf face faceface\nface0x facexy face1yz\n"),
           QByteArray("000 0000\n0zz0 0000 00000000\n00000x facexy 00000yz\n"));
    addRow("a line behind prose", QByteArray("Hello board\n17 ready\n"),
           QByteArray("Hello board\n00 ready\n"));
    addRow("prose with two words", QByteArray("status 0bb8 05dc\n"), QByteArray("status 0000 0000\n"));
    addRow("three letters in a word too short", QByteArray("xyz 17\n"), QByteArray("xyz 00\n"));
    addRow("three letters in a word with a digit", QByteArray("xyz1 17\n"), QByteArray("xyz0 00\n"));
    addRow("two letters in a long word", QByteArray("ready 17\n"), QByteArray("ready 00\n"));
    for (const char *prose :
         {"status: quality 960 rises 577/536\r\n", "board 1001 ready!", "1a2b status 17, 00d10bb8 bad bb8\n",
          "17 pens\n", "[?] commands: . 0 U0 U1 < > V T ? :RMM :MDU0 :MDP0!"})
        addRow(prose, QByteArray(prose), QByteArray(prose));
    addRow("numbers", QByteArray("17\r\n4711!"), QByteArray("00\r\n0000!"));
    addRow("nothing", QByteArray(), QByteArray());
}

void TextWordsTests::lines()
{
    QFETCH(QByteArray, text);
    const QByteArray found = blanked(text);
    QTEST(found, "left");
    QCOMPARE(blanked(found), found);
}

void TextWordsTests::linesThatSpanReports()
{
    // Cut behind the "F", the label is not known.
    const int label = line.indexOf('F') + 1;
    const auto cutsLabel = [label](int index) { return index >= label && index < label + 2; };
    QByteArray withoutLabel = blankedLine;
    withoutLabel.replace("F: 07d0", "0: 0000");
    for (int first = 0; first <= line.size(); ++first) {
        for (int second = first; second <= line.size(); ++second) {
            redacting::TextLines lines;
            QByteArray left = blanked(lines, line.left(first));
            left += blanked(lines, line.mid(first, second - first));
            left += blanked(lines, line.mid(second));
            QCOMPARE(left, cutsLabel(first) || cutsLabel(second) ? withoutLabel : blankedLine);
        }
    }
}

/// It counts up to the report at hand.
void TextWordsTests::proseThatSpansReports()
{
    redacting::TextLines lines;
    QCOMPARE(blanked(lines, "12 sta"), QByteArray("00 st0"));
    QCOMPARE(blanked(lines, "tus 12"), QByteArray("tus 12"));
    QCOMPARE(blanked(lines, "34 0b"), QByteArray("34 0b"));
    QCOMPARE(blanked(lines, "b8 05dc "), QByteArray("00 0000 "));
    QCOMPARE(blanked(lines, "17\n status 1"), QByteArray("00\n status 1"));
    QCOMPARE(blanked(lines, "7!17"), QByteArray("7!00"));
}

/// Wherever a character is another one: no digit of a word is left.
void TextWordsTests::damagedLines()
{
    const int end = line.indexOf('\r');
    for (int index = 0; index < end; ++index) {
        for (const char other : {'z', '>', '\0', '\xE9', '\n', '!'}) {
            for (int cut = 0; cut <= end; ++cut) {
                QByteArray damaged = line;
                damaged[index] = other;
                redacting::TextLines lines;
                QByteArray left = blanked(lines, damaged.left(cut));
                left += blanked(lines, damaged.mid(cut));
                QByteArray expected = blankedLine;
                expected[index] = other;
                QCOMPARE(left, expected);
            }
        }
    }
}

/// In as many reports as there may be.
void TextWordsTests::randomLines()
{
    std::mt19937 random(1);
    const int end = line.indexOf('\r');
    const QByteArray digits = "0123456789abcdefABCDEFabcdefabcdef";
    for (int i = 0; i < 5'000; ++i) {
        QByteArray damaged = line;
        for (int at = 0; at < end; ++at) {
            if (isxdigit(line[at]))
                damaged[at] = digits[int(random() % unsigned(digits.size()))];
        }
        const int index = int(random() % unsigned(end));
        damaged[index] = char(random());
        redacting::TextLines lines;
        QByteArray left;
        while (left.size() < damaged.size())
            left += blanked(lines, damaged.mid(left.size(), int(random() % 40)));
        for (int at = 0; at < end; ++at)
            QVERIFY2(at == index || !isxdigit(line[at]) || left[at] == '0', damaged.constData());
    }
}

void TextWordsTests::linesWithoutTheirBeginning()
{
    const int lineFeed = line.indexOf('\n');
    for (int first = 0; first <= lineFeed; ++first)
        QCOMPARE(blanked(line.mid(first)), blankedLine.mid(first));
    // Nobody knows that this is a frequency.
    QCOMPARE(blanked(line.mid(lineFeed + 1)), QByteArray("O 0: 0000  !"));
}

/// What comes behind it is not taken for the end of the line before.
void TextWordsTests::linesBehindALoss()
{
    redacting::Redactor redactor;
    const QByteArray header = fromHex("0832");
    QCOMPARE(redacted(redactor, report(header + "\nO F: ", 0)).payload, header + "\nO F: ");
    QCOMPARE(redacted(redactor, report(header + "1a", 1)).payload, header + "1a");
    QCOMPARE(redacted(redactor, report(header + "2b", 3)).payload, header + "00");
}

void TextWordsTests::textsOfSeveralBoards()
{
    redacting::Redactor redactor;
    const QByteArray header = fromHex("0632");
    const QByteArray otherType = fromHex("0677");
    QCOMPARE(redacted(redactor, report(header + "\nO F: ", 0)).payload, header + "\nO F: ");
    QCOMPARE(redacted(redactor, report(header + "1a", 1, 1002)).payload, header + "00");
    QCOMPARE(redacted(redactor, report(otherType + "1a", 2)).payload, otherType + "00");
    QCOMPARE(redacted(redactor, report(header + "1a", 3)).payload, header + "1a");
}

PADSCOPE_TESTS(TextWordsTests);
#include "tst_textwords.moc"
