#pragma once

namespace CLI {
class App;
}

/// Adds `padscope stats`, which sets the status when it is run.
void addStatsCommand(CLI::App &program, int &status);
