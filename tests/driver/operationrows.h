#pragma once

#include <functional>

#include <QVector>

#include "orvexwrapper.h"
#include "support/driverlibrary.h"

namespace operationrows {

/// One operation of the binding that has an entry point.
struct Row
{
    const char *entryPoint;
    int result; ///< what the library answers
    /// The operation with arguments of its own; what it returns and writes, as text, empty for nothing.
    std::function<QString(OrvexWrapper &)> call;
    const char *journal;          ///< how the library sees it; @data, @context and so on stand for addresses
    const char *returned;         ///< with the entry point present
    const char *returnedFallback; ///< with the entry point missing
};

inline _ORVEX_DEVICE_INFO info{};
inline unsigned char bytes[840] = {1, 2, 3};
inline int first = 0;
inline int second = 0;
inline unsigned char major = 0;
inline unsigned char minor = 0;
inline unsigned int release = 0;
inline unsigned int build = 0;
inline int context = 0;

inline void onData(int, const unsigned char *, unsigned int, void *) {}
inline void onPlug(void *) {}

/// Puts the addresses of the objects above in the place of their names.
inline QString filledIn(const char *journal)
{
    QString text = QString::fromLatin1(journal);
    const auto fill = [&text](const char *name, auto pointer) {
        text.replace(QLatin1String(name), journalText(pointer));
    };
    fill("@onData", &onData);
    fill("@onPlug", &onPlug);
    fill("@context", &context);
    fill("@bytes", bytes);
    fill("@info", &info);
    fill("@first", &first);
    fill("@second", &second);
    fill("@major", &major);
    fill("@minor", &minor);
    fill("@release", &release);
    fill("@build", &build);
    return text;
}

inline QString text(int value)
{
    return QString::number(value);
}

inline QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

/// Everything but the two operations that have no entry point, in the order of the interface.
const QVector<Row> &all();

} // namespace operationrows
