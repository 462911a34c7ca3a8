#include "library.h"
#include "scenariofolder.h"
#include "scenarioreader.h"
#include "strictjson.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

// Scenarios and faults.

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

void Library::readEnvironment()
{
    scenario = defaultScenario();
    scenarioName = defaultName;
    const char *chosen = std::getenv(environmentVariable);
    if (chosen && *chosen) {
        const auto loaded = load(chosen, error);
        scenario = loaded.value_or(Scenario{});
        scenarioName = loaded ? chosen : "";
        if (!loaded)
            std::fputs((error + '\n').c_str(), stderr);
    }
    usePlaces();
}

/// Plugs in what the scenario has there at first, and nothing else.
void Library::usePlaces()
{
    sockets.clear();
    for (const Scenario::Place &place : scenario.boards) {
        if (place.plugged)
            sockets.push_back({place.plan, nullptr});
    }
}

bool Library::choose(const std::string &nameOrPath)
{
    std::string complaint;
    auto loaded = load(nameOrPath, complaint);
    if (!loaded) {
        complain(complaint);
        return false;
    }
    Leaving leaving;
    {
        const std::lock_guard lock(mutex);
        leaving = takeOut();
        scenario = std::move(*loaded);
        scenarioName = nameOrPath;
        usePlaces();
        standing = {};
        if (currentNotices) {
            power();
            currentNotices->post();
        }
    }
    finish(stop(leaving));
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

void Library::complain(const std::string &line)
{
    const std::lock_guard lock(mutex);
    error = line;
}

/// A board as the scenario describes it, unless that one is there already.
BoardPlan Library::planFor(int id) const
{
    const auto isThere = [this](const BoardPlan &plan) {
        return std::any_of(sockets.begin(), sockets.end(),
                           [&plan](const Socket &socket) { return socket.plan.happened == plan.happened; });
    };
    for (const Scenario::Place &place : scenario.boards) {
        if (place.plan.id == id && !isThere(place.plan))
            return place.plan;
    }
    return {id, static_cast<std::uint32_t>(id)};
}

/// What is due at once has happened when the attach returns.
void Library::startEvents()
{
    std::vector<LibraryEvent> later;
    for (const LibraryEvent &event : scenario.events) {
        if (event.at.count() == 0 && event.what != LibraryEvent::What::Unplug)
            change(event);
        else
            later.push_back(event);
    }
    scenario.events = later;
    timeline->add(later);
}

/// Called on the timeline's thread.
void Library::happen(const Timeline &source, const LibraryEvent &event)
{
    {
        const std::lock_guard lock(mutex);
        if (timeline.get() != &source) // of an attach that is over
            return;
        const auto same = [&event](const LibraryEvent &other) {
            return other.at == event.at && other.what == event.what && other.value == event.value;
        };
        const auto match = std::find_if(scenario.events.begin(), scenario.events.end(), same);
        if (match != scenario.events.end())
            scenario.events.erase(match);
        if (event.what != LibraryEvent::What::Unplug) {
            change(event);
            return;
        }
    }
    // Joins not what others have put aside: that may be this very thread.
    auto ending = pullOut(event.value);
    if (ending && ending->joinable())
        ending->join();
}

void Library::change(const LibraryEvent &event)
{
    switch (event.what) {
    case LibraryEvent::What::Plug:
        plugLocked(event.value);
        break;
    case LibraryEvent::What::Notice:
        currentNotices->post();
        break;
    case LibraryEvent::What::EnumerationFails:
        if (standing.failingIndexes.erase(event.value) == 0)
            standing.failingIndexes.insert(event.value);
        break;
    case LibraryEvent::What::CountLies:
        standing.countLie = standing.countLie == 0 ? event.value : 0;
        break;
    case LibraryEvent::What::SlowCommand:
        standing.commands.delayMs = event.value;
        break;
    case LibraryEvent::What::CallbackInCommand:
        standing.commands.callback = !standing.commands.callback;
        break;
    case LibraryEvent::What::Unplug:
        break; // never at once: happen() does it without the lock
    }
}

bool Library::trigger(const std::string &name)
{
    const Fault *fault = faultNamed(name);
    if (!fault) {
        std::vector<std::string> known;
        for (const Fault &other : faults)
            known.emplace_back(other.name);
        complain(name + ": there is no such fault; allowed are " + listed(known));
        return false;
    }
    const auto present = boards();
    const bool concernsBoards = fault->scope != Fault::Scope::Library;
    if (!notices() || (concernsBoards && present.empty())) {
        complain(name + ": nobody is attached to a board; attach first");
        return false;
    }
    if (!concernsBoards) {
        const auto events = libraryEvents(*fault, {});
        const std::lock_guard lock(mutex);
        scenario.events.insert(scenario.events.end(), events.begin(), events.end());
        if (timeline)
            timeline->add(events);
        return true;
    }
    const bool every = fault->scope == Fault::Scope::EveryBoard;
    for (const BoardEvent &event : boardEvents(*fault, {}, static_cast<int>(present.size()))) {
        for (std::size_t i = 0; i < (every ? present.size() : 1); ++i)
            present[i]->happen(event);
    }
    return true;
}

std::optional<bool> Library::isOn(const std::string &name) const
{
    const std::lock_guard lock(mutex);
    const bool attached = currentNotices != nullptr;
    if (name == "callback-in-command")
        return attached && standing.commands.callback;
    if (name == "enumeration-fails")
        return attached && standing.failingIndexes.count(faultNamed(name)->index) > 0;
    if (name == "lying-count")
        return attached && standing.countLie != 0;
    return std::nullopt;
}

int Library::reportedCount() const
{
    const std::lock_guard lock(mutex);
    return currentNotices ? std::max(0, static_cast<int>(sockets.size()) + standing.countLie) : 0;
}

std::optional<int> Library::reportedId(int index) const
{
    const std::lock_guard lock(mutex);
    const bool known = currentNotices && index >= 0 && static_cast<std::size_t>(index) < sockets.size();
    if (!known || standing.failingIndexes.count(index) > 0)
        return std::nullopt;
    return sockets[static_cast<std::size_t>(index)].plan.id;
}

Library::CommandFaults Library::takeCommandFaults()
{
    const std::lock_guard lock(mutex);
    const CommandFaults taken = standing.commands;
    standing.commands.delayMs = 0;
    return taken;
}
