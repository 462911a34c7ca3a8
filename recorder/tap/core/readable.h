#pragma once

#include <cstddef>
#include <optional>

/// What of the host's memory may be read. The library refuses some calls before it reads what they point at,
/// and so must not we. A system call or more, so not for callbacks.
namespace tap {

/// Whether all these bytes may be read. True where the kernel does not tell.
/// \param length at most capture::maxReportLength
bool isReadable(const void *bytes, std::size_t length);

/// Length of a text; nothing when it cannot be read up to its end.
std::optional<std::size_t> lengthOf(const char *text);

} // namespace tap
