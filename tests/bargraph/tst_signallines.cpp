#include "bargraph/bargraphtest.h"
#include "bargraph/paintcounter.h"
#include "bargraph/textline.h"
#include "support/tests.h"

class TestTextLines : public BarGraphTest
{
    Q_OBJECT

private slots:
    void goodLine74();
    void lengths_data();
    void lengths();
    void splitAnywhere();
    void oneCharacterEach();
    void words_data();
    void words();
    void proximity_data();
    void proximity();
    void frequency_data();
    void frequency();
    void tooShortPackets();
    void textOfType119();

private:
};

void TestTextLines::goodLine74()
{
    QCOMPARE(qstrlen(goodLine), 74U);
    display(view, hex("34 77 0c 00 00"), noon);
    PaintCounter paints(window.get());
    display(view, text(goodLine), noon.addMSecs(21));
    QCOMPARE(signalsOf(view), goodSignals);
    QCOMPARE(view->proxChar, 'O');
    QCOMPARE(view->frequencyRaw, qint16{16});
    QCOMPARE(view->frequency, qint64{900});
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox: O"));
    QCOMPARE(view->freqLabel->text(), QStringLiteral("Freq:"));
    QCOMPARE(view->freqSpin->value(), 900);
    QCOMPARE(view->textLine, QString());
    QCOMPARE(paints.take(), 1);
}

void TestTextLines::lengths_data()
{
    addColumns<QByteArray, bool>("line", "taken");

    const QByteArray line(goodLine);
    addRow("73 characters", QByteArray(line).remove(65, 1), false);
    addRow("74 characters", line, true);
    addRow("75 characters", QByteArray(line).insert(65, ' '), false);
    addRow("only the end", QByteArray("!"), false);
    addRow("148 characters", line.left(73) + ' ' + line, false);
}

void TestTextLines::lengths()
{
    QFETCH(QByteArray, line);
    QFETCH(bool, taken);
    PaintCounter paints(window.get());
    display(view, hex("34 77 0c 00 00"), noon);
    paints.take();
    const QString before = stateOf(view);
    display(view, text(line), noon.addMSecs(21));
    QCOMPARE(stateOf(view) != before, taken);
    QCOMPARE(paints.take(), taken ? 1 : 0);

    // The next line starts empty.
    display(view, text(goodLine), noon.addMSecs(100));
    QCOMPARE(signalsOf(view), goodSignals);
    QCOMPARE(paints.take(), 1);
}

void TestTextLines::splitAnywhere()
{
    const QByteArray line(goodLine);
    for (int index = 1; index < line.size(); ++index) {
        std::fill(std::begin(view->channelSignals), std::end(view->channelSignals), qint16{-7});
        display(view, text(line.left(index)));
        QCOMPARE(signalsOf(view), QVector<int>(12, -7));
        QCOMPARE(view->textLine, QString::fromLatin1(line.left(index)));
        display(view, text(line.mid(index)));
        QCOMPARE(signalsOf(view), goodSignals);
        QCOMPARE(view->proxChar, 'O');
        QCOMPARE(view->frequency, qint64{900});
    }
}

void TestTextLines::oneCharacterEach()
{
    for (const char *character = goodLine; *character; ++character)
        display(view, text(QByteArray(1, *character)));
    QCOMPARE(signalsOf(view), goodSignals);
}

void TestTextLines::words_data()
{
    addColumns<QByteArray, QVector<int>>("line", "expected");

    const auto leading = [](const QVector<int> &values) {
        return values + QVector<int>(12 - values.size(), -7);
    };
    addRow("capitals", lineWith(0, "ABCD 7FFF 8000 FFFF"),
           QVector<int>{-21555, 32767, -32768, -1, 5, 6, 7, 8, 9, 10, 11, 12});
    addRow("small letters", lineWith(0, "abcd 7fff 8000 ffff"),
           QVector<int>{-21555, 32767, -32768, -1, 5, 6, 7, 8, 9, 10, 11, 12});
    // Sixteen bits are written: of 12345678 the last four digits, 22136 in decimal; of 30003 a 3.
    addRow("too many digits", lineWith(0, "12345678 3"), leading({22136, 3, 4, 5, 6}));
    addRow("minus sign", lineWith(0, "-001"), QVector<int>{-1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    addRow("prefix", lineWith(0, "0x1f"), QVector<int>{31, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    addRow("two words and no more", lineWith(10, "zzzz"), leading({1, 2}));
    addRow("first word bad", lineWith(0, "zzzz"), leading({}));
    addRow("no asterisk", lineWith(29, " "), leading({1, 2, 3, 4, 5, 6}));
    addRow("asterisk too early", lineWith(24, "*"), leading({1, 2, 3, 4, 5}));
    addRow("blank before the asterisk", lineWith(26, "06 *000"),
           QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    addRow("NUL byte", lineWith(12, QByteArray(1, '\0')), leading({1, 2, 0}));
    addRow("high byte", lineWith(15, "\xe9"), leading({1, 2, 3}));
    addRow("last word missing", lineWith(55, "zzzz"), QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -7});
}

void TestTextLines::words()
{
    QFETCH(QByteArray, line);
    QCOMPARE(line.size(), 74);
    std::fill(std::begin(view->channelSignals), std::end(view->channelSignals), qint16{-7});
    display(view, text(line));
    QTEST(signalsOf(view), "expected");
    // Whatever the words, the rest of the line counts.
    QCOMPARE(view->proxChar, 'O');
    QCOMPARE(view->frequency, qint64{900});
}

void TestTextLines::proximity_data()
{
    addColumns<QByteArray, int>("line", "expected");

    addRow("letter", lineWith(61, "N"), int{'N'});
    addRow("high byte", lineWith(61, "\xe9"), 0xe9);
    addRow("NUL", lineWith(61, QByteArray(1, '\0')), 0);
    addRow("behind the first of two line feeds", lineWith(40, "\nQ"), int{'Q'});
    addRow("a line feed itself", lineWith(60, "\n\n"), int{'\n'});
    addRow("line feed as the last but one", lineWith(60, " "), int{'!'});
    addRow("no line feed at all", lineWith(60, " ").replace(72, 1, " "), int{'P'});
}

void TestTextLines::proximity()
{
    QFETCH(QByteArray, line);
    QFETCH(int, expected);
    QCOMPARE(line.size(), 74);
    view->proxChar = 'P';
    display(view, hex("34 77 0c 00 00"), noon);
    display(view, text(line), noon.addMSecs(21));
    QCOMPARE(static_cast<int>(static_cast<unsigned char>(view->proxChar)), expected);
    QCOMPARE(view->proxLabel->text(), QStringLiteral("Prox: ") + QChar(static_cast<ushort>(expected)));
}

void TestTextLines::frequency_data()
{
    addColumns<QByteArray, int, qlonglong>("line", "raw", "expected");

    addRow("four digits", lineWith(67, "1000"), 4096, 230400LL);
    addRow("negative", lineWith(67, "FFFC"), -4, -225LL);
    addRow("cut toward zero", lineWith(67, "0001"), 1, 56LL);
    addRow("negative, cut toward zero", lineWith(67, "ffff"), -1, -56LL);
    addRow("largest", lineWith(67, "7fff"), 32767, 1843143LL);
    addRow("smallest", lineWith(67, "8000"), -32768, -1843200LL);
    addRow("no digit keeps the value", lineWith(67, "zzzz"), 8, 450LL);
    addRow("nothing but the end keeps the value", lineWith(67, "    "), 8, 450LL);
    addRow("blanks first", lineWith(67, "  2z"), 2, 112LL);
    addRow("digit before does not count", lineWith(66, "1zzzz"), 8, 450LL);
    addRow("NUL before does not matter", lineWith(64, QByteArray(1, '\0')), 16, 900LL);
    addRow("up to the end", lineWith(67, "012345"), 0x2345, 507881LL); // 9029 * 225 / 4
}

void TestTextLines::frequency()
{
    QFETCH(QByteArray, line);
    QCOMPARE(line.size(), 74);
    view->frequencyRaw = 8;
    display(view, text(line));
    QTEST(int{view->frequencyRaw}, "raw");
    QTEST(qlonglong{view->frequency}, "expected");
}

void TestTextLines::tooShortPackets()
{
    display(view, text("abc"));
    for (const char *digits : {"", "28", "2832"}) {
        display(view, hex(digits));
        QCOMPARE(view->textLine, QStringLiteral("abc"));
    }
    display(view, hex("283264"));
    QCOMPARE(view->textLine, QStringLiteral("abcd"));
}

void TestTextLines::textOfType119()
{
    const QString before = stateOf(view);
    display(view, "\x28\x77" + QByteArray(goodLine), noon.addMSecs(5000));
    QCOMPARE(stateOf(view), before);
}

PADSCOPE_TESTS(TestTextLines);
#include "tst_signallines.moc"
