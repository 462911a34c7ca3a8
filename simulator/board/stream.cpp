#include "stream.h"

#include "textlines.h"

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
    , firmware(sensor)
    , odd(plan.seed + 2)
{
    nextUnknown = unknownPeriod;
    if (plan.lines)
        answers.push_back(plainLine("board " + std::to_string(plan.id) + " ready"));
}

Report Stream::next(std::chrono::nanoseconds period)
{
    if (answerDue())
        return answer();
    clock += period;
    return scheduled();
}

/// Takes no time and nobody's place.
Report Stream::answer()
{
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

/// Puts in what the commands have left, and no text that is held back; when that is nothing, all.
void Stream::shuffleDeck()
{
    const auto fill = [this](const auto &isWanted) {
        for (int kind = 0; kind < kindCount; ++kind) {
            const int cards = plan.weights[static_cast<std::size_t>(kind)];
            if (isWanted(kind))
                deck.insert(deck.end(), static_cast<std::size_t>(cards), static_cast<Kind>(kind));
        }
    };
    fill([this](int kind) {
        const bool held = static_cast<Kind>(kind) == Kind::StatusText && clock < nextStatus;
        return !held && !firmware.switches().muted[static_cast<std::size_t>(kind)];
    });
    if (deck.empty())
        fill([](int) { return true; });
    random.shuffle(deck);
}

Kind Stream::nextKind()
{
    if (deck.empty())
        shuffleDeck();
    const Kind kind = deck.back();
    deck.pop_back();
    return kind;
}

Measurement Stream::measure()
{
    return sensor.measure(std::chrono::duration<double>(clock).count());
}

void Stream::command(std::string_view bytes)
{
    const Switches before = firmware.switches();
    const bool greets = answering() && nextAnswer == Time::zero(); // nothing was said yet
    for (std::string &answer : firmware.take(bytes)) {
        if (answers.size() >= maxAnswers)
            answers.pop_back();
        answers.push_back(std::move(answer));
    }
    if (!greets)
        nextAnswer = std::max(nextAnswer, clock + answerPeriod);
    holdTexts(std::clamp<Time>(nextLine + answerPeriod, clock + minHold, clock + maxHold));
    const Switches &now = firmware.switches();
    if (now.voltages && !before.voltages)
        nextVoltage = clock;
    if (now.muted != before.muted)
        deck.clear();
}
