#pragma once

#include <map>
#include <memory>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include "simulator/simulatedlibrary.h"

/// What the steps of a row work on: a library, and recorders with names. `detacher`, `clearer` and `caller`
/// also call the library from within each callback.
struct Run
{
    Run() { load(SIMULATOR_FILE); }
    ~Run() { qunsetenv("ORVEXSIM_SCENARIO"); }

    void load(const QByteArray &file);
    Recorder &recorder(const QString &name);
    /// \return what the library says, and the id
    std::pair<int, int> enumerate(int index, unsigned int kind) const;

    static int threadCount()
    {
        return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }

    std::map<QString, Recorder> recorders; // they outlive the library
    QTemporaryDir folder;
    int threadsBefore = threadCount();
    std::unique_ptr<SimulatedLibrary> library;
    QElapsedTimer clock;
};

/// What a step does or looks at, told as text.
struct Word
{
    QString (*result)(Run &run, const QStringList &values);
    bool looks = true; ///< only, and may be done again
};

const std::map<QString, Word> &words();
