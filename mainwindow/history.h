#pragma once

class QLineUpDownEdit;
class QSettings;

/// Loads up to 30 lines into the field. Each is prepended, which reverses their order, by design.
void loadHistory(QLineUpDownEdit &field, const QSettings &settings);

/// Writes the newest 31 lines, one more than are loaded, by design. Keys with higher indices stay as they
/// are.
void saveHistory(const QLineUpDownEdit &field, QSettings &settings);
