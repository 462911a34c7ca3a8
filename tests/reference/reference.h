#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

/// Pictures and texts that the views once made, kept beside the tests.
///
/// With PADSCOPE_WRITE_REFERENCE set in the environment they are written anew instead of compared. That is
/// for a change of what is to be seen, never for a change of how it is painted.
namespace reference {

/// Compares a picture, pixel for pixel, with the one that is kept under its name.
/// \return what differs; empty when nothing does
QString difference(const QString &name, const QImage &picture);

/// Compares two pictures pixel for pixel.
/// \return what differs; empty when nothing does
QString difference(const QImage &actual, const QImage &expected);

/// The same for the bytes of a text file.
QString difference(const QString &name, const QByteArray &text);

} // namespace reference
