#pragma once

namespace CLI {
class App;
}

/// Adds `padscope dissector`, which sets the status when it is run.
void addDissectorCommand(CLI::App &program, int &status);
