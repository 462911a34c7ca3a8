#include "library.h"
#include "listed.h"
#include "scenariofolder.h"
#include "scenarioreader.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

// Scenarios, faults, and what happens to the library.

namespace {

constexpr char environmentVariable[] = "ORVEXSIM_SCENARIO";
constexpr char defaultName[] = "default";
constexpr int firstBoardId = 1001;

/// What scenarios/default.json says: the library works without its folder of scenarios.
Scenario defaultScenario()
{
    return {"One board", {{{firstBoardId, firstBoardId}}}, {}};
}

std::optional<Scenario> load(const std::string &nameOrPath, std::string &complaint)
{
    const std::string file = scenariofolder::fileOf(nameOrPath);
    if (!file.empty())
        return readScenario(file, complaint);
    complaint = nameOrPath + ": there is no such scenario; allowed are a path and " +
                (scenariofolder::names().empty() ? "no name" : listed(scenariofolder::names()));
    return std::nullopt;
}

} // namespace

Library::Library()
    : scenario(defaultScenario())
    , scenarioName(defaultName)
{
    const char *chosen = std::getenv(environmentVariable);
    if (chosen && *chosen) {
        const auto loaded = load(chosen, error);
        scenario = loaded.value_or(Scenario{});
        scenarioName = loaded ? chosen : "";
        if (!loaded)
            std::fputs((error + '\n').c_str(), stderr);
    }
    plugged.use(scenario);
}

bool Library::choose(const std::string &nameOrPath)
{
    std::string complaint;
    auto loaded = load(nameOrPath, complaint);
    if (!loaded)
        return complain(complaint);
    std::vector<std::shared_ptr<Board>> leaving;
    {
        const std::lock_guard lock(mutex);
        leaving = plugged.takeAttached();
        scenario = std::move(*loaded);
        scenarioName = nameOrPath;
        plugged.use(scenario);
        standing = {};
        if (current) {
            powerAll();
            current->notify();
        }
    }
    Threads ending;
    for (const auto &board : leaving)
        ending.push_back(board->stop());
    endingThreads.join(std::move(ending));
    return true;
}

std::string Library::currentScenario() const
{
    const std::lock_guard lock(mutex);
    return scenarioName;
}

std::string Library::lastError() const
{
    const std::lock_guard lock(mutex);
    return error;
}

/// \return false
bool Library::complain(const std::string &line)
{
    const std::lock_guard lock(mutex);
    error = line;
    return false;
}

/// Starts the boards and what happens to them. What is due at once has happened when the attach returns.
void Library::powerAll()
{
    for (PluggedBoards::Socket &socket : plugged.all())
        power(socket);
    std::vector<LibraryEvent> later;
    for (const LibraryEvent &event : std::exchange(scenario.events, {})) {
        if (event.at.count() == 0 && event.what != LibraryEvent::What::Unplug)
            change(event);
        else
            later.push_back(event);
    }
    schedule(std::move(later));
}

void Library::schedule(std::vector<LibraryEvent> events)
{
    for (LibraryEvent &event : events) {
        event.number = ++lastEvent;
        scenario.events.push_back(event);
    }
    if (current)
        current->add(events);
}

/// Called on the attachment's thread.
/// \return whether the event was still to come; those of another scenario or an attach that is over are not
bool Library::happen(const LibraryEvent &event)
{
    {
        const std::lock_guard lock(mutex);
        const auto match =
            std::find_if(scenario.events.begin(), scenario.events.end(),
                         [&event](const LibraryEvent &other) { return other.number == event.number; });
        if (match == scenario.events.end())
            return false;
        scenario.events.erase(match);
        if (event.what != LibraryEvent::What::Unplug) {
            change(event);
            return true;
        }
    }
    // Joins not what others have left to be joined: that may be this very thread.
    if (auto socket = takeOut(event.value)) {
        std::thread ending = pullOut(std::move(*socket));
        if (ending.joinable())
            ending.join();
    }
    return true;
}

void Library::change(const LibraryEvent &event)
{
    if (event.what == LibraryEvent::What::Plug)
        plugLocked(event.value);
    else if (event.what == LibraryEvent::What::Change)
        event.change(standing, event.value);
}

bool Library::trigger(const std::string &name)
{
    const Fault *fault = faultNamed(name);
    if (!fault)
        return complain(name + ": there is no such fault; allowed are " + faultNames());
    const auto present = boards();
    if (!attachment() || (fault->scope != Fault::Scope::Library && present.empty()))
        return complain(name + ": nobody is attached to a board; attach first");
    const FaultEvents events =
        fault->events(*fault, fault->amount.usual, {}, static_cast<int>(present.size()));
    {
        const std::lock_guard lock(mutex);
        schedule(events.ofLibrary);
    }
    for (const auto &board : present) {
        for (const BoardEvent &event : events.ofBoards)
            board->happen(event);
        if (fault->scope != Fault::Scope::EveryBoard)
            break;
    }
    return true;
}

std::optional<bool> Library::isOn(const std::string &name) const
{
    const Fault *fault = faultNamed(name);
    if (!fault || !fault->isOn)
        return std::nullopt;
    const std::lock_guard lock(mutex);
    return current && fault->isOn(standing);
}

StandingFaults Library::takeCommandFaults()
{
    const std::lock_guard lock(mutex);
    const StandingFaults taken = standing;
    standing.commandDelayMs = 0;
    return taken;
}
