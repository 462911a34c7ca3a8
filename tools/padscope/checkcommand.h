#pragma once

namespace CLI {
class App;
}

/// Adds `padscope check`, which sets the status when it is run.
void addCheckCommand(CLI::App &program, int &status);
