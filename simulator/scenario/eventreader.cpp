#include "eventreader.h"

#include "faults.h"
#include "jsonvalues.h"
#include "listed.h"

namespace {

constexpr int maxBurst = 100000;

int knownBoard(const Json &node, const Scenario &scenario)
{
    const int id = readId(node);
    std::vector<std::string> known;
    for (const Scenario::Place &place : scenario.boards) {
        if (place.plan.id == id)
            return id;
        known.push_back(std::to_string(place.plan.id));
    }
    refuse(node, "there is no board " + std::to_string(id) + "; allowed are " +
                     (known.empty() ? "none" : listed(known)));
}

using What = decltype(BoardEvent::what);

/// What may happen to a board: its name, the key of its amount, and how that is read.
struct Rule
{
    const char *name;
    const char *amount;
    What (*read)(const Json &amount);
};
constexpr Rule rules[] = {
    {"burst", "reports", [](const Json &amount) -> What { return Burst{readAmount(amount, maxBurst)}; }},
    {"rate", "rate", [](const Json &amount) -> What { return Rate{readAmount(amount, maxRate)}; }},
    {"pause", "seconds", [](const Json &amount) -> What { return Pause{readSeconds(amount)}; }},
    {"text", "text",
     [](const Json &amount) -> What { return Raw{textReport(reports::TextReport, readLatin1(amount))}; }},
    {"raw", "hex", [](const Json &amount) -> What { return Raw{readHex(amount)}; }},
};

const Rule &ruleNamed(const Json &name)
{
    const std::string wanted = text(name);
    for (const Rule &rule : rules) {
        if (rule.name == wanted)
            return rule;
    }
    refuse(name, "this is not known; allowed are plug, unplug, burst, rate, pause, text, raw");
}

const Fault &faultIn(const Json &name)
{
    if (const Fault *known = faultNamed(text(name)))
        return *known;
    refuse(name, "this fault is not known; allowed are " + faultNames());
}

double amountIn(const Json &node, const Amount &amount)
{
    const Json *given = amount.key ? find(node, amount.key) : nullptr;
    if (!given)
        return amount.usual;
    if (!amount.whole)
        return number(*given, amount.least, amount.most);
    return static_cast<double>(integer(*given, std::llround(amount.least), std::llround(amount.most)));
}

} // namespace

void readEvent(const Json &node, Scenario &scenario)
{
    const Json &name = need(node, "do");
    const bool plug = text(name) == "plug";
    if (plug || text(name) == "unplug") {
        allowKeys(node, {"at", "do", "board"});
        scenario.events.push_back({readSeconds(need(node, "at")),
                                   plug ? LibraryEvent::What::Plug : LibraryEvent::What::Unplug,
                                   knownBoard(need(node, "board"), scenario)});
        return;
    }
    const Rule &rule = ruleNamed(name);
    allowKeys(node, {"at", "do", "board", rule.amount});
    const int board = knownBoard(need(node, "board"), scenario);
    const auto what = rule.read(need(node, rule.amount));
    const auto at = readSeconds(need(node, "at"));
    for (Scenario::Place &place : scenario.boards) {
        if (place.plan.id == board)
            place.plan.events.push_back({at, what});
    }
}

void readFault(const Json &node, Scenario &scenario)
{
    const Fault &fault = faultIn(need(node, "fault"));
    const bool ofOneBoard = fault.scope == Fault::Scope::FirstBoard;
    std::vector<std::string_view> keys{"at", "fault"};
    if (ofOneBoard)
        keys.emplace_back("board");
    if (fault.amount.key)
        keys.emplace_back(fault.amount.key);
    allowKeys(node, keys);
    if (fault.scope != Fault::Scope::Library && scenario.boards.empty())
        refuse(node, "the fault " + std::string(fault.name) + " needs a board; there is none");
    std::chrono::nanoseconds at{0};
    take(node, "at", at, readSeconds);
    const FaultEvents events =
        fault.events(fault, amountIn(node, fault.amount), at, static_cast<int>(scenario.boards.size()));
    scenario.events.insert(scenario.events.end(), events.ofLibrary.begin(), events.ofLibrary.end());
    const Json *board = find(node, "board");
    const int id = board ? knownBoard(*board, scenario) : ofOneBoard ? scenario.boards.front().plan.id : 0;
    for (Scenario::Place &place : scenario.boards) {
        if (!ofOneBoard || place.plan.id == id)
            place.plan.events.insert(place.plan.events.end(), events.ofBoards.begin(), events.ofBoards.end());
    }
}
