#include "simulator/stream.h"

#include "simulator/textlines.h"

using namespace std::chrono_literals;

namespace {

// Each text restarts the clock of the tool's rate limit, so there must not be many. Were they regular, all of
// them would come equally soon after the report that was let through before, and the Monitor drops a line
// that comes within 30 ms.
constexpr auto textPeriod = 1s;
constexpr int textDelayMs = 120; // at most
constexpr auto statusPeriod = 1s;
constexpr auto statusDelay = 500ms; // keeps the two sorts of text apart
constexpr auto voltagePeriod = 250ms;
constexpr auto unknownPeriod = 4s;

} // namespace

Stream::Stream(BoardPlan plan_)
    : plan(std::move(plan_))
    , random(plan.seed)
    , sensor(plan.seed + 1, plan.pen, plan.adcMax)
    , firmware(sensor)
    , odd(plan.seed + 2)
    , greeted(!plan.lines)
{
    nextUnknown = unknownPeriod;
}

Report Stream::next(std::chrono::nanoseconds period)
{
    if (!greeted)
        return greeting();
    clock += period;
    return scheduled();
}

Report Stream::greeting()
{
    greeted = true;
    postponeText();
    return textReport(reports::TextReport, plainLine("board " + std::to_string(plan.id) + " ready"));
}

Report Stream::scheduled()
{
    if (plan.lines && clock >= nextText) {
        postponeText();
        return textReport(reports::TextReport, signalLine(measure()));
    }
    if (firmware.switches().statusText && due(nextStatus, statusPeriod))
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

void Stream::postponeText()
{
    nextText = clock + textPeriod + std::chrono::milliseconds(random.below(textDelayMs));
}

/// Whether it is time for something; if so, it is due again after the given time.
bool Stream::due(Time &at, Time again)
{
    if (clock < at)
        return false;
    at = clock + again;
    return true;
}

/// Puts in what the commands have left; when that is nothing, all.
void Stream::shuffleDeck()
{
    const auto fill = [this](const auto &isWanted) {
        for (int kind = 0; kind < kindCount; ++kind) {
            const int cards = plan.weights[static_cast<std::size_t>(kind)];
            if (isWanted(kind))
                deck.insert(deck.end(), static_cast<std::size_t>(cards), static_cast<Kind>(kind));
        }
    };
    fill([this](int kind) { return !firmware.switches().muted[static_cast<std::size_t>(kind)]; });
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
    const Measurement now = sensor.measure(std::chrono::duration<double>(clock).count());
    penOnBoard = now.pen.touches;
    return now;
}

std::vector<Report> Stream::command(std::string_view bytes)
{
    const Switches before = firmware.switches();
    std::vector<Report> answers;
    for (const std::string &answer : firmware.take(bytes))
        answers.push_back(textReport(reports::TextReport, answer));
    if (!answers.empty())
        postponeText();
    const Switches &now = firmware.switches();
    if (now.voltages && !before.voltages)
        nextVoltage = clock;
    if (now.statusText && !before.statusText)
        nextStatus = clock + statusDelay;
    if (now.muted != before.muted)
        deck.clear();
    return answers;
}
