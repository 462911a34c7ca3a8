#pragma once

#include <QString>

/// Loads a driver library, so that a tool that later asks the dynamic loader for its SONAME gets this one.
///
/// It stays loaded to the end of the process: its threads may outlive the tool's detach.
/// \return empty, or why it can't be loaded or is no driver library, with the file's name
QString loadDriver(const QString &file);
