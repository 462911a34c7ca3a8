#pragma once

#include <QString>

/// The text as a caption of a menu or an action, in which an ampersand alone would mark a letter.
inline QString asCaption(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}
