#pragma once

class QLineUpDownEdit;
class QSettings;

/// Adds the lines of the store to the field. Reading puts each line in front, which reverses them, by
/// design. Up to 30 lines are read and 31 written, by design.
void loadHistory(QLineUpDownEdit &field, const QSettings &settings);

/// Writes the newest lines; older keys stay as they are.
void saveHistory(const QLineUpDownEdit &field, QSettings &settings);
