#include "entrypoints.h"

#include <cstring>

#include "driver/fake/boards.h"
#include "driver/fake/journal.h"

// The 47 entry points. Each writes down how it was called, and answers what the test has set.

namespace {

/// Does nothing and returns what the test has set, otherwise 0.
struct Plain
{
#define DEFINE_PLAIN(name, returns, value, parameters, arguments)                                            \
    template <typename... Arguments>                                                                         \
    static returns name(Arguments...)                                                                        \
    {                                                                                                        \
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

    static void orvexGetCalibrationPoints(int, int *columns, int *rows)
    {
        *columns = 3;
        *rows = 5;
    }

    static void orvexLibraryVersionNumber(unsigned char *major, unsigned char *minor, unsigned int *release,
                                          unsigned int *build)
    {
        *major = 5;
        *minor = 6;
        *release = 70000;
        *build = 80000;
    }

    static int orvexSerialGetConnected(int *port)
    {
        *port = 9;
        return boards::result("orvexSerialGetConnected");
    }
};

} // namespace

#define EXPORT_ENTRY_POINT(name, returns, value, parameters, arguments)                                      \
    extern "C" [[gnu::visibility("default")]] returns name parameters                                        \
    {                                                                                                        \
        journal::call(#name) arguments;                                                                      \
        return Fake::name arguments;                                                                         \
    }
#define NO_ENTRY_POINT(name, returns, value, parameters, arguments)
ORVEX_POINTERS(EXPORT_ENTRY_POINT, NO_ENTRY_POINT)
