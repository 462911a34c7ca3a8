#include "reporttext.h"
#include "stream.h"
#include "support/tests.h"

using namespace std::chrono_literals;

/// Answers, and the texts that are held back for them.
class tst_answers : public QObject
{
    Q_OBJECT

private slots:
    void answersKeepAwayFromOtherTexts();
    void anotherBoardsAnswerHoldsTextsBack_data();
    void anotherBoardsAnswerHoldsTextsBack();
    void theGreetingComesBeforeAnyAnswer();
    void theNewestAnswersReplaceEachOther();
};

namespace {

constexpr std::chrono::nanoseconds period = 10ms;

struct Text
{
    int ms;
    std::string text;
};

/// The texts of so many milliseconds; those of the bar graph's line are called "line".
std::vector<Text> textsIn(Stream &stream, int lengthMs)
{
    std::vector<Text> texts;
    const auto start = stream.time();
    while (stream.time() < start + std::chrono::milliseconds(lengthMs)) {
        const Report report = stream.next(period);
        const auto ms = static_cast<int>((stream.time() - start) / 1ms);
        if (report.at(1) == 50)
            texts.push_back({ms, report.size() == 76 ? "line" : textOf(report)});
    }
    return texts;
}

} // namespace

// The Monitor joins texts that come within 300 ms.
void tst_answers::answersKeepAwayFromOtherTexts()
{
    Stream stream({1001, 7});
    textsIn(stream, 2500);
    stream.command(".\rU8\r");
    stream.command("B\r");
    const std::vector<Text> texts = textsIn(stream, 4500);
    QVERIFY(texts.size() >= 5);
    const char *expected[] = {"[.] streaming stopped!", "[U8] frequency locked!", "[B] streaming!", "line",
                              "line"};
    for (std::size_t i = 0; i < 5; ++i) {
        QCOMPARE(texts[i].text, std::string(expected[i]));
        QVERIFY(texts[i].ms >= (i > 0 ? texts[i - 1].ms : 0) + 600);
    }
    QCOMPARE(texts[0].ms, 600);
}

void tst_answers::anotherBoardsAnswerHoldsTextsBack_data()
{
    addColumns<QByteArray, int>("command", "statusTexts");
    addRow("lines alone", QByteArray(), 0);
    addRow("status texts after their command", QByteArray("T"), 0);
    addRow("status texts among the kinds", QByteArray(), 5);
}

void tst_answers::anotherBoardsAnswerHoldsTextsBack()
{
    QFETCH(QByteArray, command);
    QFETCH(int, statusTexts);
    BoardPlan plan{1001, 7};
    plan.weights[static_cast<std::size_t>(Kind::StatusText)] = statusTexts;
    Stream stream(plan);
    stream.command(command.constData());
    textsIn(stream, 7500);
    stream.command("");
    for (int ms = 0; ms < 2400; ms += 10) {
        const int type = stream.next(period).at(1);
        QVERIFY(type != 50 && type != 119);
    }
    QVERIFY(!textsIn(stream, 200).empty());
}

void tst_answers::theGreetingComesBeforeAnyAnswer()
{
    Stream stream({1001, 7});
    stream.command("?");
    QCOMPARE(textOf(stream.next(period)), std::string("board 1001 ready!"));
    const std::vector<Text> texts = textsIn(stream, 1000);
    QCOMPARE(texts.size(), std::size_t{1});
    QCOMPARE(texts[0].ms, 600);
    QCOMPARE(texts[0].text.substr(0, 13), std::string("[?] commands:"));
}

// As many as a spin box sends that is held down.
void tst_answers::theNewestAnswersReplaceEachOther()
{
    Stream stream({1001, 7});
    stream.command("U8"); // or the frequency drifts
    textsIn(stream, 1000);
    for (int i = 0; i < 1000; ++i)
        stream.command(">");
    const std::vector<Text> texts = textsIn(stream, 7500);
    QVERIFY(texts.size() >= 11);
    QCOMPARE(texts.at(0).text, std::string("[>] frequency 112556 Hz!")); // 2001 steps of 56.25 Hz
    QCOMPARE(texts.at(9).text, std::string("[>] frequency 168750 Hz!")); // 3000
    QCOMPARE(texts.at(10).text, std::string("line"));
}

PADSCOPE_TESTS(tst_answers);
#include "tst_answers.moc"
