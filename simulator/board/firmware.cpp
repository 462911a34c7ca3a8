#include "firmware.h"

#include <algorithm>
#include <iterator>

#include "encoding.h"
#include "layouts.h"

namespace {

constexpr std::size_t maxEcho = 40;

std::string set(bool &state, bool on, const char *done)
{
    state = on;
    return done;
}

std::string toggle(bool &state, const char *what)
{
    state = !state;
    return std::string(what) + (state ? " on" : " off");
}

std::string lockFrequency(Sensor &sensor, bool on)
{
    sensor.lockFrequency(on);
    return on ? "frequency locked" : "frequency not locked";
}

std::string stepFrequency(Sensor &sensor, int steps)
{
    sensor.stepFrequency(steps);
    return "frequency " + std::to_string(reports::frequencyOf(sensor.frequency())) + " Hz";
}

std::string resetExtremes(Switches &, Sensor &sensor)
{
    sensor.resetExtremes();
    return "extremes reset";
}

std::string help();

struct Command
{
    const char *name;
    std::string (*action)(Switches &now, Sensor &sensor); ///< tells what it has done
};
constexpr Command commands[] = {
    {".", [](Switches &now, Sensor &) { return set(now.streaming, false, "streaming stopped"); }},
    {"B", [](Switches &now, Sensor &) { return set(now.streaming, true, "streaming"); }},
    {"U8", [](Switches &, Sensor &sensor) { return lockFrequency(sensor, true); }},
    {"U0", [](Switches &, Sensor &sensor) { return lockFrequency(sensor, false); }},
    {"<", [](Switches &, Sensor &sensor) { return stepFrequency(sensor, -1); }},
    {">", [](Switches &, Sensor &sensor) { return stepFrequency(sensor, 1); }},
    {"V", [](Switches &now, Sensor &) { return toggle(now.voltages, "voltage reports"); }},
    {"T", [](Switches &now, Sensor &) { return toggle(now.statusText, "status text"); }},
    {"?", [](Switches &, Sensor &) { return help(); }},
    {":RMM", resetExtremes},
    {":MDU0", [](Switches &, Sensor &) { return std::string("goodbye"); }},
    {":MDP0", [](Switches &, Sensor &) { return std::string("goodbye"); }},
};

std::string help()
{
    std::string text = "commands:";
    for (const Command &command : commands)
        text += std::string(" ") + command.name;
    return text;
}

/// A character as an answer may show it: an exclamation mark would end the answer's line.
char shown(char character)
{
    return character >= ' ' && character <= '~' && character != '!' ? character : '.';
}

/// The first command whose name begins with the text.
const Command *commandFrom(const std::string &text)
{
    const auto match =
        std::find_if(std::begin(commands), std::end(commands), [&text](const Command &command) {
            return std::string_view(command.name).substr(0, text.size()) == text;
        });
    return match == std::end(commands) ? nullptr : match;
}

} // namespace

std::vector<std::string> Firmware::take(std::string_view bytes, Sensor &sensor)
{
    std::vector<std::string> answers;
    for (const char character : bytes) {
        if (character != '\r')
            pending += character;
        const Command *command = commandFrom(pending);
        if (command && pending == command->name)
            answers.push_back(answer(command->action(state, sensor)));
        else if (character == '\r' && !pending.empty())
            answers.push_back(answer("not known, " + help()));
    }
    if (!commandFrom(pending))
        answers.push_back(answer("not known, " + help()));
    return answers;
}

/// Answers what is pending. The Monitor drops a report that equals the one before: no two answers in a row
/// are the same.
std::string Firmware::answer(const std::string &text)
{
    std::string echo = pending.substr(0, maxEcho);
    std::transform(echo.begin(), echo.end(), echo.begin(), shown);
    pending.clear();
    const std::string first = plainLine("[" + echo + "] " + text);
    return lastAnswer = first == lastAnswer ? plainLine("[" + echo + "] again: " + text) : first;
}
