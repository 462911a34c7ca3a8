#include <algorithm>
#include <cstdlib>
#include <utility>

#include "library.h"
#include "listed.h"
#include "scenarioreader.h"

// Scenarios, faults, and what happens to the library.

namespace {

std::optional<Scenario> load(const std::string &nameOrPath, std::string &error)
{
    const std::string file = scenarioFile(nameOrPath);
    if (!file.empty())
        return readScenario(file, error);
    error = nameOrPath + ": there is no such scenario; allowed are a path and " +
            (scenarioNames().empty() ? "no name" : listed(scenarioNames()));
    return std::nullopt;
}

} // namespace

Library::Library()
{
    // As scenarios/default.json has it: the library works without its folder of scenarios.
    Scenario scenario{"One board", {{1001, 1001}}, {}};
    const char *chosen = std::getenv("ORVEXSIM_SCENARIO");
    if (chosen && *chosen) {
        const auto loaded = load(chosen, state.error);
        scenario = loaded.value_or(Scenario{});
        state.scenarioName = loaded ? chosen : "";
        if (!loaded)
            say(state.error);
    }
    use(std::move(scenario));
}

/// Puts the boards of a scenario in the place of all others.
void Library::use(Scenario scenario)
{
    state.scenario = std::move(scenario);
    state.plugged.use(state.scenario);
    state.player.reset();
    if (state.scenario.replay) {
        state.player = std::make_shared<Player>(state.scenario.replay, *this);
        state.plugged.arrange(state.player->boards());
    }
    replaying = state.player != nullptr;
}

bool Library::choose(const std::string &nameOrPath)
{
    std::string error;
    auto loaded = load(nameOrPath, error);
    if (!loaded)
        return fail(error);
    std::shared_ptr<Player> played;
    endingThreads.end(locked([&](State &now) {
        CallbackThreads leaving = now.plugged.takeAttached();
        played = now.player;
        if (played)
            leaving.insert(leaving.begin(), played);
        use(std::move(*loaded));
        now.scenarioName = nameOrPath;
        now.standing = {};
        if (now.attachment) {
            powerAll();
            now.attachment->notify();
            if (now.player)
                now.player->begin();
        }
        return leaving;
    }));
    if (played)
        played->finish();
    return true;
}

/// \return false
bool Library::fail(const std::string &error)
{
    locked([&](State &now) { now.error = error; });
    return false;
}

/// Starts the boards and what happens to them. What is due at once has happened when the attach returns.
void Library::powerAll()
{
    for (std::vector<Socket> *list : {&state.plugged.all(), &state.plugged.departed()}) {
        for (Socket &socket : *list)
            power(socket);
    }
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
        event.change(state.standing);
}

/// Called on the attachment's thread. Does nothing for an event of another scenario or of an attach that is
/// over. \return whether the hot-plug callbacks are to be called
bool Library::happen(const LibraryEvent &event)
{
    const bool due =
        event.number == 0 || locked([&](State &now) {
            auto &events = now.scenario.events;
            const auto isIt = [&event](const LibraryEvent &other) { return other.number == event.number; };
            const auto match = std::find_if(events.begin(), events.end(), isIt);
            if (match == events.end())
                return false;
            events.erase(match);
            change(event);
            return true;
        });
    if (due && event.what == LibraryEvent::What::Unplug)
        unplug(event.value);
    return due && event.what == LibraryEvent::What::Notify;
}

bool Library::trigger(const std::string &name)
{
    const Fault *fault = faultNamed(name);
    if (!fault)
        return fail(name + ": there is no such fault; allowed are " + faultNames());
    if (isReplaying())
        return fail(name + ": nothing goes wrong in a replay but what was recorded; choose another scenario");
    const auto present = boards();
    if (!attachment() || (fault->scope != Fault::Scope::Library && present.empty()))
        return fail(name + ": nobody is attached to a board; attach first");
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
