// A host that does what its arguments say, one after the other, and prints what the library tells.

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <string>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "entrypoints.h"
#include "orvexsim.h"

namespace {

constexpr int boardCount = 2048;

void *library = nullptr;

/// Callbacks that have returned, board by board.
std::atomic<unsigned> own[boardCount];
std::atomic<unsigned> *returned = own;

template <typename Function>
Function *find(const char *name)
{
    return library ? reinterpret_cast<Function *>(dlsym(library, name)) : nullptr;
}
#define FIND(name) find<decltype(::name)>(#name)
#define POINTER(name, returns, value, parameters, arguments)                                                 \
    returns(*name##_) parameters = find<returns parameters>(#name);
#define NO_POINTER(name, returns, value, parameters, arguments)
struct EntryPoints
{
    ORVEX_POINTERS(POINTER, NO_POINTER)
};

void countReport(int device, const unsigned char *, unsigned int, void *)
{
    if (device >= 0 && device < boardCount)
        ++returned[device];
}

void ignoreHotplug(void *) {}

void load(const char *file)
{
    library = dlopen(file, RTLD_NOW);
    std::printf("%s\n", library ? "loaded" : dlerror());
}

void attach()
{
    const EntryPoints calls;
    if (!calls.orvexAttach_)
        return;
    calls.orvexSetPnpCallback_(ignoreHotplug, nullptr);
    const int count = calls.orvexAttach_();
    for (int i = 0; i < calls.orvexGetDeviceCount_(); ++i) {
        _ORVEX_DEVICE_INFO info{};
        info.recordKind = deviceInfoKind;
        if (calls.orvexEnumDeviceInfo_(i, &info) != 0)
            calls.orvexSetCallback_(info.deviceId, countReport, nullptr);
    }
    std::printf("attached %d\n", count);
}

void detach()
{
    const EntryPoints calls;
    if (calls.orvexDetach_)
        calls.orvexDetach_();
}

void send(int count)
{
    const std::array<unsigned char, 40> report{40, 33};
    int id = 0;
    FIND(orvexsim_boards)(&id, 1);
    for (int i = 0; i < count; ++i)
        FIND(orvexsim_send)(id, report.data(), report.size());
}

void plug(int id)
{
    FIND(orvexsim_plug)(id);
}

/// One that no board sends by itself.
void report(int id)
{
    const std::array<unsigned char, 6> bytes{6, 33, 0x21, 0x22, 0x23, 0x24};
    FIND(orvexsim_send)(id, bytes.data(), bytes.size());
}

void sendSized(int length)
{
    const std::vector<unsigned char> bytes(static_cast<std::size_t>(length), 33);
    FIND(orvexsim_send)(1001, bytes.data(), static_cast<unsigned>(length));
}

void sendNull(int length)
{
    FIND(orvexsim_send)(1001, nullptr, static_cast<unsigned>(length));
}

void command(const char *text)
{
    const EntryPoints calls;
    if (calls.orvexSendCommand_)
        std::printf("command %d\n", calls.orvexSendCommand_(1001, text));
}

void printCounts()
{
    for (int id = 1; id < boardCount; ++id) {
        unsigned long long sent = 0;
        unsigned long long delivered = 0;
        if (FIND(orvexsim_counts)(id, &sent, &delivered) == 0)
            std::printf("board %d %llu\n", id, delivered);
    }
}

void printCalls()
{
    std::vector<OrvexsimCall> calls(4096);
    calls.resize(static_cast<std::size_t>(FIND(orvexsim_journal)(0, calls.data(), 4096)));
    std::map<unsigned long long, int> threads; // numbered as they come
    for (const OrvexsimCall &call : calls) {
        const int thread = threads.emplace(call.thread, static_cast<int>(threads.size())).first->second;
        std::printf("%d %s\n", thread, call.text);
    }
}

/// Signals that are blocked and ignored, streams, process group.
void printSurroundings()
{
    FILE *status = std::fopen("/proc/self/status", "re");
    char line[256];
    unsigned long long signals = 0;
    while (std::fgets(line, sizeof line, status)) {
        // The C library keeps 32 and 33 for itself.
        if (std::sscanf(line, "SigBlk: %llx", &signals) == 1 ||
            std::sscanf(line, "SigIgn: %llx", &signals) == 1)
            std::printf("%.6s %llx\n", line, signals & 0x7FFFFFFF);
    }
    std::fclose(status);
    for (int file = 0; file < 100; ++file) {
        if (fcntl(file, F_GETFD) >= 0)
            std::printf("open %d\n", file);
    }
    std::printf("%s\n", getpgrp() == getpgid(getppid()) ? "group of the parent" : "another group");
}

void countInto(const char *path)
{
    const int file = open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (ftruncate(file, sizeof own) != 0)
        std::abort();
    void *memory = mmap(nullptr, sizeof own, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    returned = static_cast<std::atomic<unsigned> *>(memory);
}

void touch(const char *path)
{
    close(open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
}

void waitMs(int ms)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

void waitUntil(const char *file)
{
    while (access(file, F_OK) != 0)
        waitMs(5);
}

std::atomic<int> caughtSignals{0};

void catchSignal(int number)
{
    std::signal(number, [](int) {
        ++caughtSignals;
        touch("caught");
    });
}

void printCaught(int)
{
    std::printf("caught %d\n", caughtSignals.load());
}

/// Until so many more were.
void waitDelivered(int count)
{
    unsigned long long delivered = 0;
    FIND(orvexsim_totals)(nullptr, &delivered);
    if (FIND(orvexsim_wait_delivered)(delivered + static_cast<unsigned>(count), 60'000) == 0)
        std::printf("not delivered: %d\n", count);
}

/// Until so many were since the library was loaded.
void waitTotal(int count)
{
    if (FIND(orvexsim_wait_delivered)(static_cast<unsigned>(count), 60'000) == 0)
        std::printf("not delivered in all: %d\n", count);
}

void raiseSignal(int number)
{
    std::fflush(stdout);
    std::raise(number);
}

void end(int status)
{
    std::exit(status);
}

bool run(const std::string &step)
{
    const std::size_t equals = std::min(step.find('='), step.size());
    const std::string value = step.substr(std::min(equals + 1, step.size()));
    const std::string name = step.substr(0, equals);
    static const std::map<std::string, void (*)()> plain{{"attach", attach},
                                                         {"detach", detach},
                                                         {"counts", printCounts},
                                                         {"calls", printCalls},
                                                         {"surroundings", printSurroundings}};
    static const std::map<std::string, void (*)(const char *)> withText{
        {"load", load}, {"command", command}, {"count", countInto}, {"touch", touch}, {"until", waitUntil}};
    static const std::map<std::string, void (*)(int)> withNumber{
        {"send", send},         {"plug", plug},   {"report", report},           {"sized", sendSized},
        {"null", sendNull},     {"wait", waitMs}, {"delivered", waitDelivered}, {"total", waitTotal},
        {"raise", raiseSignal}, {"exit", end},    {"catch", catchSignal},       {"caught", printCaught}};
    if (plain.count(name) > 0)
        plain.at(name)();
    else if (withText.count(name) > 0)
        withText.at(name)(value.c_str());
    else if (withNumber.count(name) > 0)
        withNumber.at(name)(std::atoi(value.c_str()));
    else
        return name == "secure" && std::printf("secure %lu\n", getauxval(AT_SECURE)) > 0;
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (!run(argv[i]))
            return 99;
        std::fflush(stdout);
    }
    return 0;
}
