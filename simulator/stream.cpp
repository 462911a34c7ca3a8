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

struct Share
{
    Kind kind;
    int cards;
};

// In a regular order the kinds would beat with the tool's rate limit, and some would never be shown. The bar
// graph lives on the first of them.
constexpr Share shares[] = {
    {Kind::Signal1, 5}, {Kind::Signal2, 2},     {Kind::Signal3, 2}, {Kind::Signal4, 2},  {Kind::Signal5, 3},
    {Kind::Signal6, 2}, {Kind::PenIdentity, 2}, {Kind::DualPen, 2}, {Kind::Position, 2}, {Kind::Phase, 2},
};

} // namespace

Stream::Stream(int id_, std::uint32_t seed)
    : id(id_)
    , random(seed)
    , sensor(seed + 1)
    , firmware(sensor)
{
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
    nextUnknown = clock + unknownPeriod;
    return textReport(reports::TextReport, plainLine("board " + std::to_string(id) + " ready"));
}

Report Stream::scheduled()
{
    if (clock >= nextText) {
        postponeText();
        return textReport(reports::TextReport, signalLine(measure()));
    }
    if (firmware.switches().statusText && due(nextStatus, statusPeriod))
        return textReport(reports::TextOrAdcReport, statusLine(measure()));
    if (firmware.switches().voltages && due(nextVoltage, voltagePeriod))
        return encode(Kind::Adc, measure());
    if (due(nextUnknown, unknownPeriod))
        return unknownReport(random);
    return encode(nextKind(), measure());
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

Kind Stream::nextKind()
{
    if (deck.empty()) {
        for (const Share &share : shares)
            deck.insert(deck.end(), static_cast<std::size_t>(share.cards), share.kind);
        random.shuffle(deck);
    }
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
    const bool voltages = firmware.switches().voltages;
    const bool statusText = firmware.switches().statusText;
    std::vector<Report> answers;
    for (const std::string &answer : firmware.take(bytes))
        answers.push_back(textReport(reports::TextReport, answer));
    if (!answers.empty())
        postponeText();
    if (firmware.switches().voltages && !voltages)
        nextVoltage = clock;
    if (firmware.switches().statusText && !statusText)
        nextStatus = clock + statusDelay;
    return answers;
}
