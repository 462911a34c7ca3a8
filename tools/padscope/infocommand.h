#pragma once

namespace CLI {
class App;
}

/// Adds `padscope info`, which sets the status when it is run.
void addInfoCommand(CLI::App &program, int &status);
