#pragma once

#include <QString>

// Why a path that was asked for is of no use, in a few words, or an empty text when it is.

/// "no such file", "a folder, not a file", or what the system says.
QString reasonAgainstFile(const QString &path);

/// The same, and "not a library" for a file that does not begin as one.
QString reasonAgainstLibrary(const QString &path);

/// "no such folder", "a file, not a folder", or what the system says.
QString reasonAgainstFolder(const QString &path);

/// What the system says against new files in a folder that is there.
QString reasonAgainstWritingTo(const QString &folder);
