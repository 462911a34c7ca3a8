#pragma once

class QString;

/// Appends a row to the log file of the day, as Latin-1. A row that can't be written is lost silently.
/// \param second on a line of its own unless it is empty
void appendToDayLog(const QString &first, const QString &second);
