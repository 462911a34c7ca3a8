#pragma once

#include <QTest>

// The table of a test: addColumns<QString, int>("text", "length") and, for each of its rows,
// addRow("name", "abc", 3).

template <typename... Types, typename... Names>
void addColumns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

template <typename... Values>
void addRow(const char *name, const Values &...values)
{
    (QTest::newRow(name) << ... << values);
}

namespace testsupport {

using RunTests = int (*)(int argc, char **argv);

/// Lets main() find the tests of a class by the name of their file: "tst_rows" for
/// tests/monitor/tst_rows.cpp.
bool addTests(const char *file, RunTests run);

template <typename Tests>
int runTests(int argc, char **argv)
{
    Tests tests;
    return QTest::qExec(&tests, argc, argv);
}

} // namespace testsupport

/// Ends the file of a test class. One program holds the tests of a folder: `tests_monitor tst_rows` runs
/// these.
#define PADSCOPE_TESTS(Class)                                                                                \
    [[maybe_unused]] static const bool areAdded##Class =                                                     \
        testsupport::addTests(__FILE__, testsupport::runTests<Class>)
