#pragma once

#include <QByteArray>

#include "reading.h"

namespace plots {

/// The page that tells of a capture all there is to see: what it has, its statistics, and its pictures.
QByteArray pageOf(const Contents &contents, const Pictures &pictures);

} // namespace plots
