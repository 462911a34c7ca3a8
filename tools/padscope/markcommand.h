#pragma once

namespace CLI {
class App;
}

/// Adds `padscope mark`, which sets the status when it is run.
void addMarkCommand(CLI::App &program, int &status);
