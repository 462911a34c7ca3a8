#pragma once

namespace CLI {
class App;
}

/// Adds `padscope redact`, which sets the status when it is run.
void addRedactCommand(CLI::App &program, int &status);
