#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Adds `padscope replay`, which sets the status when it is run.
/// \param host the command behind "--", which outlives the program
void addReplayCommand(CLI::App &program, const std::vector<std::string> &host, int &status);
