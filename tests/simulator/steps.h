#pragma once

#include <QObject>

/// Runs the rows of a data file against the simulator: `name | step & step |`. A row has a library and a home
/// of its own; it fails at the first step whose result is another one.
///
///   attach = 1 & listen 1001 a & heard a > 5
///
/// A step is a word of steps.cpp with its values. "=" compares the result as text, "^" its beginning, "<" and
/// ">" compare it as a number. What only looks is done again until it is as expected, or ten seconds are
/// over. Recorders have names; `detacher`, `clearer` and `caller` also call the library from within each
/// callback.
class Steps : public QObject
{
    Q_OBJECT

public:
    explicit Steps(const char *file_)
        : file(file_)
    {
    }

private slots:
    void steps_data();
    void steps();

private:
    const char *file;
};
