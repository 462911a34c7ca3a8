#pragma once

#include <QSettings>

/// The tool's settings, as any other program that reads and writes them meanwhile has them.
inline QSettings otherStore()
{
    return QSettings("Corvane", "qorvexgraph");
}
