#include "simulator/simulatedlibrary.h"

#include <algorithm>
#include <dlfcn.h>
#include <QtGlobal>
#include <string>

SimulatedLibrary::SimulatedLibrary(const char *file)
    : handle(dlopen(file, RTLD_NOW))
{
    if (!handle)
        qFatal("%s", dlerror());
#define LOOK_UP(name) name = reinterpret_cast<decltype(name)>(dlsym(handle, #name));
    ORVEX_LOOKUPS(LOOK_UP)
#undef LOOK_UP
#define LOOK_UP(member, name) member = reinterpret_cast<decltype(member)>(dlsym(handle, #name));
    ORVEXSIM_FUNCTIONS(LOOK_UP)
#undef LOOK_UP
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

bool SimulatedLibrary::has(const char *name) const
{
    return dlsym(handle, name) != nullptr;
}

std::vector<int> SimulatedLibrary::boardIds() const
{
    std::vector<int> ids(static_cast<std::size_t>(boards(nullptr, 0)));
    boards(ids.data(), static_cast<int>(ids.size()));
    return ids;
}

std::string SimulatedLibrary::error() const
{
    std::string text(static_cast<std::size_t>(lastError(nullptr, 0)) + 1, ' ');
    lastError(text.data(), static_cast<unsigned int>(text.size()));
    text.pop_back();
    return text;
}

std::vector<std::string> SimulatedLibrary::callsFrom(unsigned long long number) const
{
    std::vector<OrvexsimCall> calls(4096);
    calls.resize(static_cast<std::size_t>(journal(number, calls.data(), 4096)));
    std::vector<std::string> texts;
    for (const OrvexsimCall &call : calls)
        texts.emplace_back(call.text);
    return texts;
}

void Recorder::data(int device, const unsigned char *bytes, unsigned int length, void *recorder)
{
    auto &self = *static_cast<Recorder *>(recorder);
    {
        const std::lock_guard lock(self.mutex);
        self.delivered.push_back({device, Bytes(bytes, bytes + length), std::this_thread::get_id()});
    }
    if (self.action)
        self.action(device);
}

void Recorder::twin(int device, const unsigned char *bytes, unsigned int length, void *recorder)
{
    data(device, bytes, length, recorder);
}

void Recorder::pnp(void *recorder)
{
    auto &self = *static_cast<Recorder *>(recorder);
    {
        const std::lock_guard lock(self.mutex);
        ++self.notified;
    }
    if (self.action)
        self.action(0);
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

std::size_t Recorder::notifications() const
{
    const std::lock_guard lock(mutex);
    return notified;
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
