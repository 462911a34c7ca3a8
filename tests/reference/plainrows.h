#pragma once

class QString;
class monitor;

/// The rows of the Monitor in their plainest form, for comparison.
namespace plainrows {

/// Puts a plain tree view, a plain label and a plain layout in the place of the tab's own.
void install(monitor *view);

/// Adds a row as monitor::AddData() does, without logging and without anything that makes it faster.
void add(monitor *view, const QString &first, const QString &second);

} // namespace plainrows
