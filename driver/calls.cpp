#include "calls.h"

#include <dlfcn.h>
#include <utility>
#include <vector>

namespace {

std::vector<void *> librariesToClose;

} // namespace

int CallInProgress::calls = 0;

void CallInProgress::closeAfterwards(void *library)
{
    librariesToClose.push_back(library);
}

void CallInProgress::closeLibraries()
{
    for (void *library : std::exchange(librariesToClose, {}))
        dlclose(library);
}
