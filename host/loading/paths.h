#pragma once

#include <QString>

// Why a path cannot be used, in a few words; empty when it can.

/// "no such file", "a folder, not a file", or what the system says.
QString reasonAgainstFile(const QString &path);

/// The same, and "not a library" for a file that does not begin as one.
QString reasonAgainstLibrary(const QString &path);

/// "no such folder", "a file, not a folder", or what the system says.
QString reasonAgainstFolder(const QString &path);

/// Why no file can be created in an existing folder: what the system says.
QString reasonAgainstWritingTo(const QString &folder);
