#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QTime>

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

/// Adds the column "scene" and a row for each line of a data file here, by its first part.
void addScenes(const char *name, int parts);

/// \param text "480x360"
QSize sizeOf(const QString &text);

struct Report
{
    QByteArray bytes;
    QTime time;
};

/// Those of reports.txt.
QVector<Report> reports();

/// Fails the test, with what differs, unless that is nothing.
void verifyNone(const QString &difference);

} // namespace reference
