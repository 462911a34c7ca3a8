#include "firmware.h"

#include "textlines.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char carriageReturn = '\r';
constexpr std::size_t longestEcho = 40;

/// A character as an answer may show it: an exclamation mark would end the answer's line.
char shown(char character)
{
    return character >= ' ' && character <= '~' && character != '!' ? character : '.';
}

std::string echoOf(const std::string &text)
{
    std::string echo = text.substr(0, longestEcho);
    std::transform(echo.begin(), echo.end(), echo.begin(), shown);
    return "[" + echo + "] ";
}

} // namespace

const Firmware::Command Firmware::commands[] = {
    {".", &Firmware::stop},           {"B", &Firmware::start},
    {"U8", &Firmware::lock},          {"U0", &Firmware::unlock},
    {"<", &Firmware::stepDown},       {">", &Firmware::stepUp},
    {"V", &Firmware::toggleVoltages}, {"T", &Firmware::toggleStatusText},
    {"R", &Firmware::reset},          {"?", &Firmware::help},
    {"K1", nullptr, Kind::Signal1},   {"K2", nullptr, Kind::Signal2},
    {"K3", nullptr, Kind::Signal3},   {"K4", nullptr, Kind::Signal4},
    {"K5", nullptr, Kind::Signal5},   {"K6", nullptr, Kind::Signal6},
    {"KH", nullptr, Kind::Phase},     {"KI", nullptr, Kind::PenIdentity},
    {"KD", nullptr, Kind::DualPen},   {"KP", nullptr, Kind::Position},
    {"K*", &Firmware::allKinds},      {":RMM", &Firmware::resetExtremes},
    {":MDU0", &Firmware::farewell},   {":MDP0", &Firmware::farewell},
};

std::vector<std::string> Firmware::take(std::string_view bytes)
{
    std::vector<std::string> answers;
    for (const char character : bytes)
        takeCharacter(character, answers);
    if (!pending.empty() && !mayBecomeCommand())
        answers.push_back(refusal());
    return answers;
}

void Firmware::takeCharacter(char character, std::vector<std::string> &answers)
{
    if (character == carriageReturn) {
        if (!pending.empty())
            answers.push_back(refusal());
        return;
    }
    pending += character;
    for (const Command &command : commands) {
        if (pending == command.name)
            answers.push_back(answer(command));
    }
}

std::string Firmware::answer(const Command &command)
{
    pending.clear();
    const std::string done = command.action ? (this->*command.action)() : toggleKind(command.kind);
    return line(command.name, done);
}

std::string Firmware::refusal()
{
    const std::string refused = pending;
    pending.clear();
    return line(refused, "not known, " + help());
}

/// The Monitor drops a report that equals the one before: no two answers in a row are the same.
std::string Firmware::line(const std::string &command, const std::string &text)
{
    const std::string first = plainLine(echoOf(command) + text);
    return lastLine = first == lastLine ? plainLine(echoOf(command) + "again: " + text) : first;
}

bool Firmware::mayBecomeCommand() const
{
    return std::any_of(std::begin(commands), std::end(commands), [this](const Command &command) {
        return std::string_view(command.name).substr(0, pending.size()) == pending;
    });
}

std::string Firmware::stop()
{
    state.streaming = false;
    return "streaming stopped";
}

std::string Firmware::start()
{
    state.streaming = true;
    return "streaming";
}

std::string Firmware::lock()
{
    sensor.lockFrequency(true);
    return "frequency locked";
}

std::string Firmware::unlock()
{
    sensor.lockFrequency(false);
    return "frequency not locked";
}

std::string Firmware::stepDown()
{
    sensor.stepFrequency(-1);
    return frequencyText();
}

std::string Firmware::stepUp()
{
    sensor.stepFrequency(1);
    return frequencyText();
}

std::string Firmware::frequencyText() const
{
    return "frequency " + std::to_string(sensor.frequency() * 225 / 4) + " Hz";
}

std::string Firmware::toggleKind(Kind kind)
{
    const auto index = static_cast<std::size_t>(kind);
    state.muted.flip(index);
    return std::string(kindNames[index]) + (state.muted[index] ? " off" : " on");
}

std::string Firmware::allKinds()
{
    state.muted.reset();
    return "all kinds on";
}

std::string Firmware::toggleVoltages()
{
    state.voltages = !state.voltages;
    return state.voltages ? "voltage reports on" : "voltage reports off";
}

std::string Firmware::toggleStatusText()
{
    state.statusText = !state.statusText;
    return state.statusText ? "status text on" : "status text off";
}

std::string Firmware::resetExtremes()
{
    sensor.resetExtremes();
    return "extremes reset";
}

std::string Firmware::reset()
{
    state = {};
    sensor.reset();
    return "reset";
}

std::string Firmware::help()
{
    std::string text = "commands:";
    for (const Command &command : commands)
        text += std::string(" ") + command.name;
    return text;
}

std::string Firmware::farewell()
{
    return "goodbye";
}
