#pragma once

class QLineUpDownEdit;
class QSettings;

/// Loads the history into the field. Each line is put in front, which reverses their order, by design. At
/// most 30 lines are read and 31 written, by design.
void loadHistory(QLineUpDownEdit &field, const QSettings &settings);

/// Writes the newest lines. Keys with higher indices are left as they are.
void saveHistory(const QLineUpDownEdit &field, QSettings &settings);
