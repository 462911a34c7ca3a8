#pragma once

#include <string>

/// The calls that the fake library has seen. Any thread.
namespace calllog {

using Observer = void (*)(const char *call);

/// In double quotes, control characters and bytes above 126 as \xNN, quotes and backslashes escaped.
std::string text(const char *value);
std::string text(const void *value);
template <typename... Parameters>
std::string text(void (*function)(Parameters...))
{
    return text(reinterpret_cast<const void *>(function));
}
inline std::string text(int value)
{
    return std::to_string(value);
}
inline std::string text(unsigned int value)
{
    return std::to_string(value);
}

/// Calls `observer` with each call from now on, once it is logged and while it is in progress, on its thread;
/// null for none.
void setObserver(Observer observer);
void append(const std::string &call);

/// Logs a call when the result is called with its arguments: `call("orvexEcho")(device, length, data)`.
inline auto call(const char *entryPoint)
{
    return [entryPoint](auto... arguments) {
        std::string list;
        ((list += (list.empty() ? "" : ", ") + text(arguments)), ...);
        append(entryPoint + ("(" + list + ")"));
    };
}

int count();
const char *at(int index);
void clear();

} // namespace calllog
