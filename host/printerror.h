#pragma once

#include <QString>

/// Exit status after bad input.
inline constexpr int badInput = 2;

/// Writes "tendro-host: <text>" to standard error, as one line whatever the text holds.
/// \return badInput
int printError(const QString &text);
