#include "stream.h"

#include "encoding.h"

using namespace std::chrono_literals;

namespace {

// Each text restarts the clock of the tool's rate limit, so there must not be many. Were they regular, all of
// them would come equally soon after the report that was let through before, and the Monitor drops a line
// that comes within 30 ms.
constexpr auto linePeriod = 1s;
constexpr int maxLineDelayMs = 120;
constexpr auto statusPeriod = 1s;
constexpr auto statusDelay = 500ms; // keeps the two sorts of text apart
constexpr auto voltagePeriod = 250ms;
constexpr auto unknownPeriod = 4s;

// The Monitor joins texts that come within 300 ms, and a board may be 250 ms late.
constexpr auto answerPeriod = 600ms;
constexpr int maxAnswers = 10;
// Other texts wait so long for the answers: room for the three to "Lock Frequency", and for one more with
// each command.
constexpr auto minHold = 4 * answerPeriod;
constexpr auto maxHold = (maxAnswers + 1) * answerPeriod;

} // namespace

Stream::Stream(BoardPlan plan_)
    : plan(std::move(plan_))
    , random(plan.seed)
    , sensor(plan.seed + 1, plan.pen, plan.adcMax)
    , odd(plan.seed + 2)
{
    nextUnknown = unknownPeriod;
    if (plan.lines)
        answers.push_back(plainLine("board " + std::to_string(plan.id) + " ready"));
}

Report Stream::next(std::chrono::nanoseconds period)
{
    if (!answerDue()) {
        clock += period;
        return scheduled();
    }
    // An answer takes no time and nobody's place.
    Report report = textReport(reports::TextReport, answers.front());
    answers.pop_front();
    nextAnswer = clock + answerPeriod;
    holdTexts(clock + linePeriod);
    return report;
}

Report Stream::scheduled()
{
    if (plan.lines && !answering() && clock >= nextLine) {
        nextLine = clock + linePeriod + lineDelay();
        return textReport(reports::TextReport, signalLine(measure()));
    }
    if (firmware.switches().statusText && !answering() && due(nextStatus, statusPeriod))
        return ofKind(Kind::StatusText);
    if (firmware.switches().voltages && due(nextVoltage, voltagePeriod))
        return ofKind(Kind::Adc);
    if (plan.unknowns && due(nextUnknown, unknownPeriod))
        return odd.unknown();
    return ofKind(nextKind());
}

Report Stream::ofKind(Kind kind)
{
    if (kind == Kind::StatusText)
        return textReport(reports::TextOrAdcReport, statusLine(measure()));
    return kind < Kind::StatusText ? encode(kind, measure()) : odd.next(kind);
}

Stream::Time Stream::lineDelay()
{
    return std::chrono::milliseconds(random.below(maxLineDelayMs));
}

/// Holds back what is no answer.
void Stream::holdTexts(Time until)
{
    nextLine = std::max(nextLine, until + lineDelay());
    nextStatus = std::max(nextStatus, until + statusDelay);
    dropTexts();
}

void Stream::dropTexts()
{
    deck.erase(std::remove(deck.begin(), deck.end(), Kind::StatusText), deck.end());
}

/// Whether it is time for something; if so, it is due again after the given time.
bool Stream::due(Time &at, Time again)
{
    if (clock < at)
        return false;
    at = clock + again;
    return true;
}

Kind Stream::nextKind()
{
    if (deck.empty())
        shuffleDeck();
    const Kind kind = deck.back();
    deck.pop_back();
    return kind;
}

/// Puts in no text that is held back, unless there is nothing else.
void Stream::shuffleDeck()
{
    for (int kind = 0; kind < kindCount; ++kind) {
        const auto cards = static_cast<std::size_t>(plan.weights[static_cast<std::size_t>(kind)]);
        deck.insert(deck.end(), cards, static_cast<Kind>(kind));
    }
    const auto texts = std::count(deck.begin(), deck.end(), Kind::StatusText);
    if (clock < nextStatus && texts < static_cast<std::ptrdiff_t>(deck.size()))
        dropTexts();
    random.shuffle(deck);
}

Measurement Stream::measure()
{
    return sensor.measure(std::chrono::duration<double>(clock).count());
}

void Stream::command(std::string_view bytes)
{
    const bool hadVoltages = firmware.switches().voltages;
    const bool greets = answering() && nextAnswer == Time::zero(); // nothing was said yet
    for (std::string &answer : firmware.take(bytes, sensor)) {
        if (answers.size() >= maxAnswers)
            answers.pop_back();
        answers.push_back(std::move(answer));
    }
    if (!greets)
        nextAnswer = std::max(nextAnswer, clock + answerPeriod);
    holdTexts(std::clamp<Time>(nextLine + answerPeriod, clock + minHold, clock + maxHold));
    if (firmware.switches().voltages && !hadVoltages)
        nextVoltage = clock;
}
