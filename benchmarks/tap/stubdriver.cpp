#include "entrypoints.h"

namespace {

OrvexDataCallback kept = nullptr;

} // namespace

extern "C" __attribute__((visibility("default"))) void orvexSetCallback(int, OrvexDataCallback callback,
                                                                        void *)
{
    kept = callback;
}

extern "C" __attribute__((visibility("default"))) OrvexDataCallback registeredCallback()
{
    return kept;
}
