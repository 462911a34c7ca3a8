#pragma once

namespace CLI {
class App;
}

/// Adds `padscope decode`, which sets the status when it is run.
void addDecodeCommand(CLI::App &program, int &status);
