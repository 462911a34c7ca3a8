#pragma once

#include <cstdint>

#include "producer.h"

/// What the tap knows of the recording, in this process. Nothing here blocks, allocates or throws.
namespace tap {

/// Maps the recorder's memory that PADSCOPE_RING names, once a process, and takes the recording over unless
/// another process has it; one that has executed itself again goes on. Where that fails one line on standard
/// error says why, and calls are only forwarded.
__attribute__((visibility("default"))) void openRing();

/// Tells the recorder that no library could be loaded.
__attribute__((visibility("default"))) void noteFailedOpening();

/// Tells the recorder, unless the host is in exit(), that the tap is unloaded and the library stays.
__attribute__((visibility("default"))) void noteLibraryStays();

/// Whether this process records. False in a child that was forked off. Any thread.
ring::Control *recording();

/// The kernel's id of this thread.
std::uint32_t threadId();

/// How many calls of the library this thread is in.
int &callDepth();

/// Says a line once on standard error.
__attribute__((visibility("default"))) void say(const char *line, const char *detail = "");

/// An environment variable; null in a setuid program, or when it is not set.
__attribute__((visibility("default"))) const char *environmentOf(const char *name);

} // namespace tap
