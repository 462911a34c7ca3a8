#include "thrown.h"

#include <exception>

QString thrownText()
{
    try {
        throw;
    } catch (const std::exception &exception) {
        return QString::fromLocal8Bit(exception.what());
    } catch (...) {
        return QStringLiteral("an unknown exception");
    }
}
