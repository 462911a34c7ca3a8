#pragma once

#include <QObject>

/// Runs the rows of the data file that has its class's name against the simulator: `name | step & step|`. A
/// row has a library of its own; it fails at the first step whose result is another one.
///
///   attach = 1 & listen 1001 a & heard a > 5
///
/// A step is a word of words() with its values. "=" compares the result as text, "^" its beginning, "<" and
/// ">" compare it as a number. What only looks is done again until it is as expected, or ten seconds are
/// over.
class Steps : public QObject
{
    Q_OBJECT

private slots:
    void steps_data();
    void steps();
};
