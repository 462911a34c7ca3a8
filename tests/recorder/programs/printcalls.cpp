// Preloaded into the stand-in host: writes the simulator's call log into the file CALLS when the host flushes
// its output, which it does last.

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <map>
#include <vector>

#include "entrypoints.h"
#include "orvexsim.h"

namespace {

void writeCalls()
{
    const char *path = std::getenv("CALLS");
    void *library = dlopen(orvexLibraryName, RTLD_NOW | RTLD_NOLOAD);
    if (!path || !library)
        return;
    const auto journal = reinterpret_cast<decltype(&orvexsim_journal)>(dlsym(library, "orvexsim_journal"));
    std::vector<OrvexsimCall> calls(4096);
    calls.resize(static_cast<std::size_t>(journal(0, calls.data(), 4096)));
    std::map<unsigned long long, std::size_t> threads; // numbered as they come
    FILE *file = std::fopen(path, "we");
    for (const OrvexsimCall &call : calls)
        std::fprintf(file, "%zu %s\n", threads.emplace(call.thread, threads.size()).first->second, call.text);
    std::fclose(file);
}

} // namespace

extern "C" __attribute__((visibility("default"))) int fflush(FILE *stream)
{
    if (stream == stdout)
        writeCalls();
    return reinterpret_cast<int (*)(FILE *)>(dlsym(RTLD_NEXT, "fflush"))(stream);
}
