#pragma once

#include <QByteArray>
#include <string>

/// Two digits a byte.
inline QByteArray hexOf(const std::string &bytes)
{
    return QByteArray::fromStdString(bytes).toHex();
}
