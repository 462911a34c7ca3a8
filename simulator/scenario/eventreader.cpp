#include "eventreader.h"

#include "faults.h"
#include "listed.h"

namespace {

constexpr int maxBurst = 100000;

int knownBoard(const Json &node, const Scenario &scenario)
{
    const int id = boardId(node);
    std::vector<std::string> known;
    for (const BoardPlan &plan : scenario.boards) {
        if (plan.id == id)
            return id;
        known.push_back(std::to_string(plan.id));
    }
    reject(node, "there is no board " + std::to_string(id) + "; allowed are " +
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
    {"burst", "reports", [](const Json &amount) -> What { return Burst{positive(amount, maxBurst)}; }},
    {"rate", "rate", [](const Json &amount) -> What { return Rate{positive(amount, maxRate)}; }},
    {"pause", "seconds", [](const Json &amount) -> What { return Pause{seconds(amount)}; }},
    {"text", "text",
     [](const Json &amount) -> What { return Raw{textReport(reports::TextReport, latin1(amount))}; }},
    {"raw", "hex", [](const Json &amount) -> What { return Raw{bytes(amount)}; }},
};

const Rule &ruleNamed(const Json &name)
{
    const std::string wanted = text(name);
    for (const Rule &rule : rules) {
        if (rule.name == wanted)
            return rule;
    }
    reject(name, "this is not known; allowed are plug, unplug, burst, rate, pause, text, raw");
}

double amountIn(const Json &node, const Amount &amount)
{
    const Json *given = amount.key ? find(node, amount.key) : nullptr;
    if (!given)
        return amount.usual;
    if (!amount.whole)
        return number(*given, amount.min, amount.max);
    return static_cast<double>(integer(*given, std::llround(amount.min), std::llround(amount.max)));
}

/// \param id of the boards; nothing for all
void addEvents(Scenario &scenario, std::optional<int> id, const std::vector<BoardEvent> &events)
{
    for (BoardPlan &plan : scenario.boards) {
        if (plan.id == id.value_or(plan.id))
            plan.events.insert(plan.events.end(), events.begin(), events.end());
    }
}

} // namespace

void readEvent(const Json &node, Scenario &scenario)
{
    const Json &name = need(node, "do");
    const bool plug = text(name) == "plug";
    if (plug || text(name) == "unplug") {
        allowKeys(node, {"at", "do", "board"});
        scenario.events.push_back({seconds(need(node, "at")),
                                   plug ? LibraryEvent::What::Plug : LibraryEvent::What::Unplug,
                                   knownBoard(need(node, "board"), scenario)});
        return;
    }
    const Rule &rule = ruleNamed(name);
    allowKeys(node, {"at", "do", "board", rule.amount});
    const int board = knownBoard(need(node, "board"), scenario);
    const auto what = rule.read(need(node, rule.amount));
    addEvents(scenario, board, {{seconds(need(node, "at")), what}});
}

void readFault(const Json &node, Scenario &scenario)
{
    const Json &name = need(node, "fault");
    const Fault *known = faultNamed(text(name));
    if (!known)
        reject(name, "this fault is not known; allowed are " + faultNames());
    const Fault &fault = *known;
    std::vector<std::string_view> keys{"at", "fault"};
    if (fault.scope == Fault::Scope::FirstBoard)
        keys.emplace_back("board");
    if (fault.amount.key)
        keys.emplace_back(fault.amount.key);
    allowKeys(node, keys);
    if (fault.scope != Fault::Scope::Library && scenario.boards.empty())
        reject(node, "the fault " + std::string(fault.name) + " needs a board; there is none");
    std::chrono::nanoseconds at{0};
    take(node, "at", at, seconds);
    const FaultEvents events =
        fault.events(fault, amountIn(node, fault.amount), at, static_cast<int>(scenario.boards.size()));
    scenario.events.insert(scenario.events.end(), events.ofLibrary.begin(), events.ofLibrary.end());
    std::optional<int> id;
    if (fault.scope == Fault::Scope::FirstBoard)
        id = scenario.boards.front().id;
    take(node, "board", id, [&](const Json &board) { return knownBoard(board, scenario); });
    addEvents(scenario, id, events.ofBoards);
}
