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
{
    state.scenario = defaultScenario();
    state.scenarioName = defaultName;
    const char *chosen = std::getenv(environmentVariable);
    if (chosen && *chosen) {
        const auto loaded = load(chosen, state.error);
        state.scenario = loaded.value_or(Scenario{});
        state.scenarioName = loaded ? chosen : "";
        if (!loaded)
            std::fputs((state.error + '\n').c_str(), stderr);
    }
    state.plugged.use(state.scenario);
}

bool Library::choose(const std::string &nameOrPath)
{
    std::string complaint;
    auto loaded = load(nameOrPath, complaint);
    if (!loaded)
        return complain(complaint);
    const auto leaving = locked([&](State &now) {
        auto attached = now.plugged.takeAttached();
        now.scenario = std::move(*loaded);
        now.scenarioName = nameOrPath;
        now.plugged.use(now.scenario);
        now.standing = {};
        if (now.attachment) {
            powerAll();
            now.attachment->notify();
        }
        return attached;
    });
    Threads ending;
    for (const auto &board : leaving)
        ending.push_back(board->stop());
    endingThreads.join(std::move(ending));
    return true;
}

/// \return false
bool Library::complain(const std::string &line)
{
    locked([&](State &now) { now.error = line; });
    return false;
}

/// Starts the boards and what happens to them. What is due at once has happened when the attach returns.
void Library::powerAll()
{
    for (Socket &socket : state.plugged.all())
        power(socket);
    std::vector<LibraryEvent> later;
    for (const LibraryEvent &event : std::exchange(state.scenario.events, {})) {
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
        event.number = ++state.lastEvent;
        state.scenario.events.push_back(event);
    }
    if (state.attachment)
        state.attachment->add(events);
}

void Library::change(const LibraryEvent &event)
{
    if (event.what == LibraryEvent::What::Plug)
        plugLocked(event.value);
    else if (event.what == LibraryEvent::What::Change)
        event.change(state.standing, event.value);
}

/// Called on the attachment's thread.
/// \return whether the event was still to come; those of another scenario or an attach that is over are not
bool Library::happen(const LibraryEvent &event)
{
    const bool due = locked([&](State &now) {
        auto &events = now.scenario.events;
        const auto isIt = [&event](const LibraryEvent &other) { return other.number == event.number; };
        const auto match = std::find_if(events.begin(), events.end(), isIt);
        if (match == events.end())
            return false;
        events.erase(match);
        change(event);
        return true;
    });
    if (!due || event.what != LibraryEvent::What::Unplug)
        return due;
    // Joins not what others have left to be joined: that may be this very thread.
    const auto isIt = [&event](const Socket &socket) { return socket.plan.id == event.value; };
    for (std::thread &ending : pullOut(isIt).value_or(Threads{}))
        ending.join();
    return true;
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
    locked([&](State &) { schedule(events.ofLibrary); });
    for (const auto &board : present) {
        for (const BoardEvent &event : events.ofBoards)
            board->post(event);
        if (fault->scope != Fault::Scope::EveryBoard)
            break;
    }
    return true;
}
