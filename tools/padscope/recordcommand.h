#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Adds `padscope record`, which sets the status when it is run.
/// \param host the command behind "--", which outlives the program
void addRecordCommand(CLI::App &program, const std::vector<std::string> &host, int &status);
