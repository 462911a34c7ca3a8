#pragma once

/// Read by the leak sanitizer. Packets that still wait when the tool's window is deleted stay behind, by
/// design, and a program that uses the tool through the plugin can't reach them. The window's own tests,
/// which leave none waiting, hold that all others are deleted.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:newPacket\n";
}
