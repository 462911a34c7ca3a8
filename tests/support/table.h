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
