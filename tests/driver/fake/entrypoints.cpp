#include "entrypoints.h"

#include <cstring>
#include <type_traits>

#include "driver/fake/boards.h"
#include "driver/fake/calllog.h"

// The 47 entry points. Each logs how it was called, and answers what the test has set.

namespace {

/// Where an argument is a number to be filled in.
template <typename Argument>
void fillIn(Argument argument, int value)
{
    using Target = std::remove_pointer_t<Argument>;
    if constexpr (std::is_pointer_v<Argument> && std::is_integral_v<Target> && !std::is_const_v<Target>)
        *argument = static_cast<Target>(value);
}

/// Fills every number in with the place of its argument, and returns what the test has set, otherwise 0.
struct Plain
{
#define DEFINE_PLAIN(name, returns, value, parameters, arguments)                                            \
    template <typename... Arguments>                                                                         \
    static returns name(Arguments... all)                                                                    \
    {                                                                                                        \
        [[maybe_unused]] int place = 0;                                                                      \
        (fillIn(all, ++place), ...);                                                                         \
        return static_cast<returns>(boards::result(#name));                                                  \
    }
    ORVEX_POINTERS(DEFINE_PLAIN, DEFINE_PLAIN)
#undef DEFINE_PLAIN
};

/// The entry points that do more.
struct Fake : Plain
{
    static void orvexSetCallback(int device, OrvexDataCallback callback, void *context)
    {
        boards::addDataCallback(device, callback, context);
    }

    static void orvexSetPnpCallback(OrvexPnpCallback callback, void *context)
    {
        boards::addPnpCallback(callback, context);
    }

    static int orvexGetDeviceCount() { return boards::result("orvexGetDeviceCount", boards::count()); }

    static std::uint8_t orvexEnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info)
    {
        const bool found = boards::enumerate(index, reinterpret_cast<unsigned char *>(info));
        return static_cast<std::uint8_t>(boards::result("orvexEnumDeviceInfo", found));
    }

    static int orvexOpenSynchronousChannel(int device, OrvexDataCallback callback, void *context)
    {
        boards::setChannel(device, callback, context);
        return boards::result("orvexOpenSynchronousChannel");
    }

    /// Fills the buffer with 0xA5 and hands it to the channel's callback on the caller's thread.
    static int orvexReadSynchronousPacket(int device, int, void *buffer, int size, unsigned int)
    {
        std::memset(buffer, 0xA5, static_cast<std::size_t>(size));
        boards::callChannel(device, static_cast<unsigned char *>(buffer), static_cast<unsigned int>(size));
        return boards::result("orvexReadSynchronousPacket");
    }
};

} // namespace

#define EXPORT_ENTRY_POINT(name, returns, value, parameters, arguments)                                      \
    extern "C" [[gnu::visibility("default")]] returns name parameters                                        \
    {                                                                                                        \
        calllog::call(#name) arguments;                                                                      \
        return Fake::name arguments;                                                                         \
    }
#define NO_ENTRY_POINT(name, returns, value, parameters, arguments)
ORVEX_POINTERS(EXPORT_ENTRY_POINT, NO_ENTRY_POINT)
