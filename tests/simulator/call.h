#pragma once

#include <QRegularExpression>
#include <tuple>

#include "simulator/run.h"

/// The next value of a step as a parameter of a function of the library; see call().
template <typename Parameter>
Parameter take(Run &run, const QStringList &values, int &next, QByteArray &text)
{
    const QString word = values.value(next);
    const bool isCallback =
        std::is_same_v<Parameter, OrvexDataCallback> || std::is_same_v<Parameter, OrvexPnpCallback>;
    next += isCallback ? 0 : 1; // its context comes of the same word
    if constexpr (std::is_integral_v<Parameter>)
        return static_cast<Parameter>(word.toLongLong());
    else if (word == "null")
        return nullptr;
    else if constexpr (std::is_same_v<Parameter, const char *>)
        return (text = word.toUtf8().replace("\\r", "\r")).constData();
    else if constexpr (std::is_same_v<Parameter, void *>)
        return &run.recorder(QString(word).remove(QRegularExpression("['*]")));
    else if constexpr (std::is_same_v<Parameter, OrvexPnpCallback>)
        return Recorder::pnp;
    else if (word.endsWith('*'))
        return reinterpret_cast<OrvexDataCallback>(reinterpret_cast<void (*)()>(Recorder::pnp));
    else
        return word.endsWith('\'') ? Recorder::twin : Recorder::data;
}

/// Calls a function of the library with the values of a step.
///
/// "a" stands for a callback and its context: recorder a and its function, "a'" for another function of it,
/// "a*" for the one for notifications. "null" is a null pointer.
template <typename Result, typename... Parameters>
QString call(Run &run, const QStringList &values, Result (*function)(Parameters...))
{
    [[maybe_unused]] int next = 0;
    QByteArray text;
    const std::tuple<Parameters...> arguments{take<Parameters>(run, values, next, text)...};
    if constexpr (std::is_void_v<Result>)
        return std::apply(function, arguments), QString();
    else
        return QString::number(std::apply(function, arguments));
}
