#include "boundary.h"
#include "calllog.h"
#include "library.h"
#include "orvexsim.h"
#include "scenarioreader.h"

namespace {

using State = Library::State;

/// What `action(library)` returns, or the fallback when it throws.
template <typename Result, typename Action>
Result ask(Result fallback, Action action) noexcept
{
    return guarded([=] { return fallback; }, [&]() -> Result { return action(Library::instance()); });
}

/// What `action(state)` returns under the library's lock, or the fallback when it throws.
template <typename Result, typename Action>
Result askState(Result fallback, Action action) noexcept
{
    return ask(fallback, [&](Library &library) { return library.locked(action); });
}

/// 0 when the action is done, -1 when it is not.
template <typename Action>
int done(Action action) noexcept
{
    return ask(-1, [&](Library &library) { return action(library) ? 0 : -1; });
}

/// \return whether there are counts
bool put(const std::optional<Counts> &counts, unsigned long long *sent, unsigned long long *delivered)
{
    if (counts && sent)
        *sent = counts->sent;
    if (counts && delivered)
        *delivered = counts->delivered;
    return counts.has_value();
}

} // namespace

extern "C" {

ORVEXSIM_EXPORT int orvexsim_plug(int id)
{
    return done([&](Library &library) { return library.plug(id); });
}

ORVEXSIM_EXPORT int orvexsim_unplug(int id)
{
    return done([&](Library &library) { return library.unplug(id); });
}

ORVEXSIM_EXPORT int orvexsim_set_rate(int id, int perSecond)
{
    return askState(-1,
                    [&](State &now) { return !now.player && now.plugged.setRate(id, perSecond) ? 0 : -1; });
}

ORVEXSIM_EXPORT int orvexsim_boards(int *ids, int capacity)
{
    return askState(0, [&](State &now) {
        const auto &found = now.plugged.all();
        for (std::size_t i = 0; i < found.size() && static_cast<int>(i) < capacity; ++i)
            ids[i] = found[i].plan.id;
        return static_cast<int>(found.size());
    });
}

ORVEXSIM_EXPORT int orvexsim_send(int id, const unsigned char *bytes, unsigned int length)
{
    return orvexsim_send_on(ORVEXSIM_CALLERS_THREAD, id, bytes, length);
}

ORVEXSIM_EXPORT int orvexsim_send_on(int thread, int id, const unsigned char *bytes, unsigned int length)
{
    return ask(-1, [&](Library &library) {
        const auto boards = library.boardsWith(id);
        if (boards.empty() || thread < ORVEXSIM_CALLERS_THREAD || thread > ORVEXSIM_NEW_THREAD)
            return -1;
        int called = 0;
        const auto send = [&] {
            for (const auto &board : boards) {
                if (thread == ORVEXSIM_BOARDS_THREAD && !Library::isReplaying())
                    board->post(Report(bytes, bytes + length));
                else
                    called += board->deliver(bytes, length);
            }
        };
        if (thread == ORVEXSIM_NEW_THREAD)
            std::thread(send).join();
        else
            send();
        return called;
    });
}

ORVEXSIM_EXPORT void orvexsim_totals(unsigned long long *sent, unsigned long long *delivered)
{
    done([&](Library &library) { return put(library.tally.totals(), sent, delivered); });
}

ORVEXSIM_EXPORT int orvexsim_counts(int id, unsigned long long *sent, unsigned long long *delivered)
{
    return done([&](Library &library) { return put(library.tally.of(id), sent, delivered); });
}

ORVEXSIM_EXPORT int orvexsim_wait_delivered(unsigned long long count, unsigned int timeoutMs)
{
    return ask(0, [&](Library &library) { return library.tally.waitDelivered(count, timeoutMs) ? 1 : 0; });
}

ORVEXSIM_EXPORT int orvexsim_scenario_count()
{
    return ask(0, [](Library &) { return static_cast<int>(scenarioNames().size()); });
}

ORVEXSIM_EXPORT int orvexsim_scenario(int index, char *name, unsigned int nameSize, char *title,
                                      unsigned int titleSize)
{
    return done([&](Library &) {
        const auto names = scenarioNames();
        if (index < 0 || static_cast<std::size_t>(index) >= names.size())
            return false;
        const std::string &found = names[static_cast<std::size_t>(index)];
        std::string error;
        const auto scenario = readScenario(scenarioFile(found), error);
        copyText(found, name, nameSize);
        copyText(scenario ? scenario->title : error, title, titleSize);
        return true;
    });
}

ORVEXSIM_EXPORT int orvexsim_choose(const char *scenario)
{
    return done([&](Library &library) { return library.choose(scenario ? scenario : ""); });
}

ORVEXSIM_EXPORT int orvexsim_current_scenario(char *buffer, unsigned int size)
{
    return askState(0, [&](State &now) { return copyText(now.scenarioName, buffer, size); });
}

ORVEXSIM_EXPORT const char *orvexsim_fault(int index)
{
    const auto number = static_cast<std::size_t>(index);
    return number < faults().size() ? faults()[number].name.data() : nullptr; // a literal, zero-terminated
}

ORVEXSIM_EXPORT const char *orvexsim_fault_text(const char *fault)
{
    const Fault *known = faultNamed(fault ? fault : "");
    return known ? known->text : nullptr;
}

ORVEXSIM_EXPORT int orvexsim_fault_is_on(const char *fault)
{
    return askState(-1, [&](State &now) {
        const Fault *known = faultNamed(fault ? fault : "");
        return known && known->isOn ? static_cast<int>(now.attachment && known->isOn(now.standing)) : -1;
    });
}

ORVEXSIM_EXPORT int orvexsim_trigger(const char *fault)
{
    return done([&](Library &library) { return library.trigger(fault ? fault : ""); });
}

ORVEXSIM_EXPORT int orvexsim_last_error(char *buffer, unsigned int size)
{
    return askState(0, [&](State &now) { return copyText(now.error, buffer, size); });
}

ORVEXSIM_EXPORT unsigned long long orvexsim_journal_length()
{
    return ask(0ULL, [](Library &) { return CallLog::instance().length(); });
}

ORVEXSIM_EXPORT int orvexsim_journal(unsigned long long from, OrvexsimCall *calls, int capacity)
{
    return ask(0, [&](Library &) { return CallLog::instance().read(from, calls, capacity); });
}

ORVEXSIM_EXPORT int orvexsim_calibration(int, int, unsigned char *)
{
    return -1;
}

} // extern "C"
