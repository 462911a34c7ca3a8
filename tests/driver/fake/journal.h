#pragma once

#include <cstdint>
#include <string>

/// The calls that the fake library has seen. Any thread.
namespace journal {

std::string text(int value);
std::string text(unsigned int value);
std::string text(std::uint8_t value);
std::string text(std::uint16_t value);
/// In double quotes, control characters and bytes above 126 as \xNN, quotes and backslashes escaped.
std::string text(const char *value);
std::string text(const void *value);

using Observer = void (*)(const char *call);

/// Calls `observer` with each call from now on, once it is written down and while it is in progress, on its
/// thread; null for none.
void setObserver(Observer observer);
void append(const std::string &call);

/// Writes down a call.
template <typename... Arguments>
void record(const char *entryPoint, Arguments... arguments)
{
    std::string list;
    ((list += (list.empty() ? "" : ", ") + text(arguments)), ...);
    append(entryPoint + ("(" + list + ")"));
}

int count();
const char *at(int index);
void clear();

} // namespace journal
