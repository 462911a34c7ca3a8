#include "replaynumbers.h"

#include <algorithm>
#include <array>
#include <QCoreApplication>
#include <QLocale>

namespace {

constexpr std::array<double, 10> rates{0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100};
constexpr double unlimited = 0;

} // namespace

QString replayTimeText(qint64 ns)
{
    const qint64 ms = ns / 1000000;
    return QStringLiteral("%1:%2.%3")
        .arg(ms / 60000)
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms % 1000, 3, 10, QLatin1Char('0'));
}

QString replayRateText(double rate)
{
    if (rate == unlimited)
        return QCoreApplication::translate("Replay", "max");
    return QLocale().toString(rate) + QLatin1Char('x');
}

double fasterReplayRate(double rate)
{
    if (rate == unlimited)
        return unlimited;
    const auto next = std::upper_bound(rates.begin(), rates.end(), rate);
    return next == rates.end() ? unlimited : *next;
}

double slowerReplayRate(double rate)
{
    if (rate == unlimited)
        return rates.back();
    const auto next = std::lower_bound(rates.begin(), rates.end(), rate);
    return next == rates.begin() ? rates.front() : *(next - 1);
}
