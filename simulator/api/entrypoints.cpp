#include "entrypoints.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <optional>
#include <thread>

#include "boundary.h"
#include "calllog.h"
#include "encoding.h"
#include "library.h"
#include "recordedcalls.h"

namespace {

/// What was recorded, in a replay; else what the binding does without an entry point: nothing is made up of
/// what a real library would do.
struct Unsimulated
{
#define DEFINE_UNSIMULATED(name, returns, value, parameters, arguments)                                      \
    template <typename... Arguments>                                                                         \
    static returns name(Arguments... values)                                                                 \
    {                                                                                                        \
        return recordedcalls::answer<returns>(recordedcalls::name##Call, fallback::name, values...);         \
    }
#define NOTHING(name, returns, value, parameters, arguments)
    ORVEX_POINTERS(DEFINE_UNSIMULATED, NOTHING)
#undef NOTHING
#undef DEFINE_UNSIMULATED
};

template <typename Callback>
Listeners::Function asFunction(Callback callback)
{
    return reinterpret_cast<Listeners::Function>(callback);
}

bool isKind(const std::string &record, std::uint32_t kind)
{
    return capture::integerAt<std::uint32_t>(capture::viewOf(record), 0) == kind;
}

/// A player may wait for what was registered now.
void tellPlayer(std::optional<int> board)
{
    if (const auto player = Library::instance().player())
        player->registered(board);
}

int sendInReplay(int device, const char *command)
{
    const auto isThere = [device] { return Library::instance().boardsWith(device).empty() ? -1 : 0; };
    const auto player = Library::instance().player();
    if (player && command)
        player->commandSent(device, command);
    return recordedcalls::answer<int>(
        recordedcalls::orvexSendCommandCall, [&] { return command ? isThere() : -1; }, device, command);
}

/// The entry points that do something.
struct Simulated : Unsimulated
{
    static int orvexAttach() { return Library::instance().attach(); }
    static void orvexDetach() { Library::instance().detach(); }

    static int orvexGetDeviceCount()
    {
        return Library::instance().locked([](Library::State &now) {
            const int count = static_cast<int>(now.plugged.all().size()) + now.standing.countLie;
            return now.attachment ? std::max(0, count) : 0;
        });
    }

    static std::uint8_t orvexEnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info)
    {
        return Library::instance().locked([&](Library::State &now) -> std::uint8_t {
            const auto number = static_cast<std::size_t>(index);
            const bool known = now.attachment && number < now.plugged.all().size();
            if (!known || now.standing.failingIndexes.count(index) > 0 || !info ||
                info->recordKind != deviceInfoKind)
                return 0;
            const PluggedBoards::Socket &socket = now.plugged.all()[number];
            if (socket.record.size() == sizeof *info && isKind(socket.record, deviceInfoKind))
                std::memcpy(info, socket.record.data(), sizeof *info);
            info->deviceId = socket.plan.id;
            return 1;
        });
    }

    static void orvexSetCallback(int device, OrvexDataCallback callback, void *context)
    {
        for (const auto &board : Library::instance().boardsWith(device))
            board->addListener(asFunction(callback), context);
        tellPlayer(callback ? std::optional(device) : std::nullopt);
    }

    // The library cannot remove hot-plug callbacks by another name: this removes both sorts.
    static void orvexClearCallback(int device, OrvexDataCallback callback, void *context)
    {
        for (const auto &board : Library::instance().boardsWith(device))
            board->removeListener(asFunction(callback), context);
        const auto attachment = Library::instance().attachment();
        if (attachment && device == 0)
            attachment->removeListener(asFunction(callback), context);
    }

    static void orvexSetPnpCallback(OrvexPnpCallback callback, void *context)
    {
        if (const auto attachment = Library::instance().attachment())
            attachment->addListener(asFunction(callback), context);
        tellPlayer(std::nullopt);
    }

    static int orvexSendCommand(int device, const char *command)
    {
        if (Library::isReplaying())
            return sendInReplay(device, command);
        if (!command)
            return -1;
        const StandingFaults wrong = Library::instance().locked([](Library::State &now) {
            StandingFaults taken = now.standing;
            now.standing.commandDelayMs = 0; // only one command is slow
            return taken;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(wrong.commandDelayMs));
        int result = -1;
        for (const auto &board : Library::instance().boards()) {
            const bool addressed = board->id() == device;
            if (addressed && wrong.callbackInCommand)
                board->deliver(textReport(reports::TextReport, plainLine("within the command")));
            board->post(std::string(addressed ? command : ""));
            result = addressed ? 0 : result;
        }
        return result;
    }
};

} // namespace

#define EXPORT_ENTRY_POINT(name, returns, value, parameters, arguments)                                      \
    extern "C" ORVEXSIM_EXPORT returns name parameters                                                       \
    {                                                                                                        \
        return guarded(fallback::name, [&]() -> returns {                                                    \
            CallLog::instance().call(#name) arguments;                                                       \
            return Simulated::name arguments;                                                                \
        });                                                                                                  \
    }
#define NO_ENTRY_POINT(name, returns, value, parameters, arguments)
ORVEX_POINTERS(EXPORT_ENTRY_POINT, NO_ENTRY_POINT)
