#pragma once

namespace CLI {
class App;
}

/// Adds `padscope plot` and `padscope report`, which set the status when they are run. Another program draws,
/// so that this one needs no library for it.
void addPlotCommand(CLI::App &program, int &status);
void addReportCommand(CLI::App &program, int &status);
