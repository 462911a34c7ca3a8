#include "tests/simulator/simulatedlibrary.h"

#include <algorithm>
#include <dlfcn.h>
#include <QtGlobal>
#include <string>

SimulatedLibrary::SimulatedLibrary()
    : handle(dlopen(SIMULATOR_FILE, RTLD_NOW))
{
    if (!handle)
        qFatal("%s", dlerror());
#define LOOK_UP(name) name = reinterpret_cast<decltype(name)>(dlsym(handle, #name));
    ORVEX_LOOKUPS(LOOK_UP)
#undef LOOK_UP
    plug = reinterpret_cast<decltype(plug)>(dlsym(handle, "orvexsim_plug"));
    unplug = reinterpret_cast<decltype(unplug)>(dlsym(handle, "orvexsim_unplug"));
    setRate = reinterpret_cast<decltype(setRate)>(dlsym(handle, "orvexsim_set_rate"));
    send = reinterpret_cast<decltype(send)>(dlsym(handle, "orvexsim_send"));
}

SimulatedLibrary::~SimulatedLibrary()
{
    unload();
}

void SimulatedLibrary::unload()
{
    if (handle)
        dlclose(handle);
    handle = nullptr;
}

bool SimulatedLibrary::isLoaded()
{
    void *found = dlopen(SIMULATOR_FILE, RTLD_NOW | RTLD_NOLOAD);
    if (found)
        dlclose(found);
    return found != nullptr;
}

void Recorder::data(int device, const unsigned char *bytes, unsigned int length, void *recorder)
{
    auto &self = *static_cast<Recorder *>(recorder);
    const std::lock_guard lock(self.mutex);
    self.delivered.push_back({device, Bytes(bytes, bytes + length), std::this_thread::get_id()});
}

void Recorder::pnp(void *recorder)
{
    auto &self = *static_cast<Recorder *>(recorder);
    const std::lock_guard lock(self.mutex);
    self.noticeThreads.push_back(std::this_thread::get_id());
}

std::vector<Recorder::Delivery> Recorder::deliveries() const
{
    const std::lock_guard lock(mutex);
    return delivered;
}

std::size_t Recorder::count() const
{
    const std::lock_guard lock(mutex);
    return delivered.size();
}

std::size_t Recorder::notices() const
{
    const std::lock_guard lock(mutex);
    return noticeThreads.size();
}

int Recorder::timesSeen(const Bytes &bytes) const
{
    const auto seen = deliveries();
    return static_cast<int>(std::count_if(seen.begin(), seen.end(),
                                          [&](const Delivery &delivery) { return delivery.bytes == bytes; }));
}

int Recorder::timesSeen(int type, const char *text) const
{
    const auto seen = deliveries();
    return static_cast<int>(std::count_if(seen.begin(), seen.end(), [&](const Delivery &delivery) {
        const std::string whole(delivery.bytes.begin(), delivery.bytes.end());
        return whole.size() > 1 && delivery.bytes[1] == type && whole.find(text) != std::string::npos;
    }));
}
