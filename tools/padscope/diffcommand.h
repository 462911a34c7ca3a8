#pragma once

namespace CLI {
class App;
}

/// Adds `padscope diff`, which sets the status when it is run.
void addDiffCommand(CLI::App &program, int &status);
