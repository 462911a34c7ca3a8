#pragma once

namespace CLI {
class App;
}

/// Adds `padscope record`, which sets the status when it is run.
void addRecordCommand(CLI::App &program, int &status);
