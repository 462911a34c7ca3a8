#include "printerror.h"

#include <cstdio>

int printError(const QString &text)
{
    QString line = text;
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    std::fprintf(stderr, "tendro-host: %s\n", qUtf8Printable(line));
    return badInput;
}
