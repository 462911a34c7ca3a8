#pragma once

#include <string>

#include "entrypoints.h"

/// What the fake library knows: boards, answers and registrations. Any thread.
namespace boards {

/// What the entry point returns: what the test has set, otherwise the default.
int result(const std::string &entryPoint, int byDefault = 0);
int count();
/// Fills a record of 840 bytes, all of them.
/// \return whether there is such a board and its enumeration does not fail
bool enumerate(int index, unsigned char *record);
void addDataCallback(int device, OrvexDataCallback callback, void *context);
void addPnpCallback(OrvexPnpCallback callback, void *context);

/// The callback of the channel that was opened last for the board.
void setChannel(int device, OrvexDataCallback callback, void *context);
void callChannel(int device, const unsigned char *data, unsigned int length);

} // namespace boards
