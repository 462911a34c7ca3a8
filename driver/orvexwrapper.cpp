#include "orvexwrapper.h"

#include <cstdio>
#include <dlfcn.h>

#include "calls.h"

namespace {

#define COUNT_NAME(name) +1
static_assert(ORVEX_LOOKUPS(COUNT_NAME) == 47, "47 names are looked up; a new one raises the number");
#undef COUNT_NAME

} // namespace

OrvexWrapper::~OrvexWrapper()
{
    if (!libraryHandle)
        return;
    const CallInProgress inProgress;
    call(orvexDetach);
    CallInProgress::closeAfterwards(libraryHandle);
}

int OrvexWrapper::Attach()
{
    if (!libraryHandle)
        libraryHandle = dlopen(orvexLibraryName, RTLD_NOW);
    if (!libraryHandle) {
        std::fputs(dlerror(), stderr);
        return 0;
    }
    lookUpEntryPoints();
    return callOr(fallback::orvexAttach(), orvexAttach);
}

void OrvexWrapper::lookUpEntryPoints()
{
#define LOOK_UP(name) name = reinterpret_cast<decltype(name)>(dlsym(libraryHandle, #name));
    ORVEX_LOOKUPS(LOOK_UP)
#undef LOOK_UP
}

void OrvexWrapper::Detach()
{
    call(orvexDetach);
}

int OrvexWrapper::Interface()
{
    return callOr(fallback::orvexInterface(), orvexInterface);
}

void OrvexWrapper::SetCallback(int device, OrvexDataCallback callback, void *context)
{
    call(orvexSetCallback, device, callback, context);
}

void OrvexWrapper::ClearCallback(int device, OrvexDataCallback callback, void *context)
{
    call(orvexClearCallback, device, callback, context);
}

void OrvexWrapper::SetPnpCallback(OrvexPnpCallback callback, void *context)
{
    call(orvexSetPnpCallback, callback, context);
}

void OrvexWrapper::ClearPnpCallback(OrvexPnpCallback callback, void *context)
{
    // Through a plain function type, since the two callbacks differ in their parameters.
    const auto plain = reinterpret_cast<void (*)()>(callback);
    call(orvexClearCallback, 0, reinterpret_cast<OrvexDataCallback>(plain), context);
}

int OrvexWrapper::SendCommand(int device, const char *command)
{
    return callOr(fallback::orvexSendCommand(), orvexSendCommand, device, command);
}

int OrvexWrapper::WritePacket(int device, const void *data, int length)
{
    return callOr(fallback::orvexWritePacket(), orvexWritePacket, device, data, length);
}

void OrvexWrapper::SetXferMask(int device, unsigned char mask)
{
    call(orvexSetXferMask, device, mask);
}

int OrvexWrapper::GetDeviceCount()
{
    return callOr(fallback::orvexGetDeviceCount(), orvexGetDeviceCount);
}

bool OrvexWrapper::EnumDeviceInfo(int index, _ORVEX_DEVICE_INFO *info)
{
    return callOr(fallback::orvexEnumDeviceInfo(), orvexEnumDeviceInfo, index, info) != 0;
}
