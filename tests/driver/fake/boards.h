#pragma once

#include <cstdint>
#include <string>

/// What the fake library knows: boards, answers and registrations. Any thread.
namespace boards {

using DataCallback = void (*)(int, const unsigned char *, unsigned int, void *);
using PnpCallback = void (*)(void *);

constexpr int recordSize = 840;

/// What the entry point returns: what the test has set, otherwise the default.
int result(const std::string &entryPoint, int byDefault = 0);
int count();
/// Fills a record of 840 bytes, all of them.
/// \return whether there is such a board and its enumeration does not fail
bool enumerate(int index, unsigned char *record);
void addDataCallback(int device, DataCallback callback, void *context);
void addPnpCallback(PnpCallback callback, void *context);

} // namespace boards
