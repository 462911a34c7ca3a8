#include <algorithm>

#include "calls.h"
#include "listenernumbers.h"
#include "listeners.h"
#include "readable.h"
#include "realcalls.h"

namespace tap {

RealCalls real;

// Found by the type of their first argument, so they can't stand in a namespace without a name.

// Callbacks: the number of the listener is recorded, and a trampoline is registered in its place.

template <typename Function>
static Described addListenerArgument(ArgumentBytes &bytes, Function &callback, void *context)
{
    bytes.add(addListener(reinterpret_cast<const void *>(callback), context));
    callback = trampolineFor(callback);
    return {};
}

static Described describeCall(Call<orvexSetCallbackCall>, ArgumentBytes &bytes, int &device,
                              OrvexDataCallback &callback, void *&context)
{
    bytes.add(device);
    return addListenerArgument(bytes, callback, context);
}

static Described describeCall(Call<orvexOpenSynchronousChannelCall>, ArgumentBytes &bytes, int &device,
                              OrvexDataCallback &callback, void *&context)
{
    bytes.add(device);
    return addListenerArgument(bytes, callback, context);
}

static Described describeCall(Call<orvexSetPnpCallbackCall>, ArgumentBytes &bytes, OrvexPnpCallback &callback,
                              void *&context)
{
    return addListenerArgument(bytes, callback, context);
}

/// With device 0 the callback may be one of either sort.
static Described describeCall(Call<orvexClearCallbackCall>, ArgumentBytes &bytes, int &device,
                              OrvexDataCallback &callback, void *&context)
{
    bytes.add(device);
    bytes.add(listenerNumber(reinterpret_cast<const void *>(callback), context));
    endListener(reinterpret_cast<const void *>(callback), context);
    const OrvexDataCallback known = knownTrampoline(callback);
    if (known == callback && device == 0) {
        const auto asPnp = reinterpret_cast<OrvexPnpCallback>(reinterpret_cast<void *>(callback));
        callback = reinterpret_cast<OrvexDataCallback>(reinterpret_cast<void *>(knownTrampoline(asPnp)));
    } else {
        callback = known;
    }
    return {};
}

static std::uint8_t describeReturn(Call<orvexDetachCall>, ArgumentBytes &, Described, std::int32_t)
{
    endListeners();
    return 0;
}

// Buffers.

static Described describeCall(Call<orvexWritePacketCall>, ArgumentBytes &bytes, int &device,
                              const void *&data, int &length)
{
    bytes.add(device);
    bytes.add(data, length > 0 ? static_cast<std::size_t>(length) : 0);
    bytes.add(length);
    return {};
}

static Described describeBytes(ArgumentBytes &bytes, int device, std::uint8_t length,
                               const unsigned char *data)
{
    bytes.add(device);
    bytes.add(length);
    bytes.add(data, length);
    return {};
}

#define DESCRIBE_BYTES(name)                                                                                 \
    static Described describeCall(Call<name##Call>, ArgumentBytes &bytes, int &device, std::uint8_t &length, \
                                  const unsigned char *&data)                                                \
    {                                                                                                        \
        return describeBytes(bytes, device, length, data);                                                   \
    }
DESCRIBE_BYTES(orvexEcho)
DESCRIBE_BYTES(orvexInject)
DESCRIBE_BYTES(orvexSendTouchPacketToSystem)
#undef DESCRIBE_BYTES

// Data without a length is not read.

static Described unread(const void *data)
{
    return {data ? std::uint8_t{capture::NotRead} : std::uint8_t{capture::PointerWasNull}};
}

#define DESCRIBE_UNREAD(name)                                                                                \
    static Described describeCall(Call<name##Call>, ArgumentBytes &bytes, int &device, void *&data)          \
    {                                                                                                        \
        bytes.add(device);                                                                                   \
        return unread(data);                                                                                 \
    }
DESCRIBE_UNREAD(orvexSetCalibrationData)
DESCRIBE_UNREAD(orvexSetWirelessCalibrationData)
#undef DESCRIBE_UNREAD

static Described describeCall(Call<orvexSetCalibrationDataExCall>, ArgumentBytes &bytes, int &device,
                              std::uint8_t &set, std::uint8_t &kind, void *&data)
{
    bytes.add(device);
    bytes.add(set);
    bytes.add(kind);
    return unread(data);
}

// What the library fills in stands in the return alone.

static Described describeCall(Call<orvexEnumDeviceInfoCall>, ArgumentBytes &bytes, int &index,
                              _ORVEX_DEVICE_INFO *&info)
{
    bytes.add(index);
    return {0, info && isReadable(info, sizeof info->recordKind) && info->recordKind == deviceInfoKind};
}

static std::uint8_t describeReturn(Call<orvexEnumDeviceInfoCall>, ArgumentBytes &bytes, Described described,
                                   std::int32_t, const int &, _ORVEX_DEVICE_INFO *const &info)
{
    if (!info)
        return capture::PointerWasNull;
    if (!described.mayRead)
        return capture::NotRead;
    if (bytes.mayRead(info, sizeof *info))
        bytes.addBytes(info, sizeof *info);
    return 0;
}

/// A number that was filled in; 0 without a place for it that may be read.
template <typename Integer>
static std::uint8_t addFilledIn(ArgumentBytes &bytes, const Integer *place)
{
    bytes.add(bytes.mayRead(place, sizeof *place) ? *place : Integer{0});
    return place ? std::uint8_t{0} : std::uint8_t{capture::PointerWasNull};
}

static Described describeCall(Call<orvexGetCalibrationPointsCall>, ArgumentBytes &bytes, int &device, int *&,
                              int *&)
{
    bytes.add(device);
    return {};
}

static std::uint8_t describeReturn(Call<orvexGetCalibrationPointsCall>, ArgumentBytes &bytes, Described,
                                   std::int32_t, const int &, int *const &columns, int *const &rows)
{
    std::uint8_t flags = addFilledIn(bytes, columns);
    flags |= addFilledIn(bytes, rows);
    return flags;
}

static Described describeCall(Call<orvexLibraryVersionNumberCall>, ArgumentBytes &, unsigned char *&,
                              unsigned char *&, unsigned int *&, unsigned int *&)
{
    return {};
}

static std::uint8_t describeReturn(Call<orvexLibraryVersionNumberCall>, ArgumentBytes &bytes, Described,
                                   std::int32_t, unsigned char *const &major, unsigned char *const &minor,
                                   unsigned int *const &release, unsigned int *const &build)
{
    std::uint8_t flags = addFilledIn(bytes, major);
    flags |= addFilledIn(bytes, minor);
    flags |= addFilledIn(bytes, release);
    flags |= addFilledIn(bytes, build);
    return flags;
}

static Described describeCall(Call<orvexSerialGetConnectedCall>, ArgumentBytes &, int *&)
{
    return {};
}

static std::uint8_t describeReturn(Call<orvexSerialGetConnectedCall>, ArgumentBytes &bytes, Described,
                                   std::int32_t, int *const &port)
{
    return addFilledIn(bytes, port);
}

static Described describeCall(Call<orvexReadSynchronousPacketCall>, ArgumentBytes &bytes, int &device,
                              int &channel, void *&, int &size, unsigned int &timeout)
{
    bytes.add(device);
    bytes.add(channel);
    bytes.add(size);
    bytes.add(timeout);
    return {};
}

/// As many bytes as the result says, at most the buffer.
static std::uint8_t describeReturn(Call<orvexReadSynchronousPacketCall>, ArgumentBytes &bytes, Described,
                                   std::int32_t result, const int &, const int &, void *const &buffer,
                                   const int &size, const unsigned int &)
{
    const int length = std::max(std::min(result, size), 0);
    bytes.add(static_cast<const void *>(buffer), static_cast<std::size_t>(length));
    return buffer ? std::uint8_t{0} : std::uint8_t{capture::PointerWasNull};
}

namespace {

#define FORWARDER(name, returns, fallback, parameters, arguments)                                            \
    returns name##Forwarder parameters                                                                       \
    {                                                                                                        \
        return forwardTo<name##Call, beginsWithDevice(#arguments)>(real.name) arguments;                     \
    }
#define NOTHING(name, returns, fallback, parameters, arguments)
ORVEX_POINTERS(FORWARDER, NOTHING)
#undef FORWARDER

} // namespace

#define ADDRESS(name, returns, fallback, parameters, arguments) name##Forwarder,
const RealCalls forwarders{ORVEX_POINTERS(ADDRESS, NOTHING)};
#undef ADDRESS
#undef NOTHING

} // namespace tap
