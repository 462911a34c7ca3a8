#include "signals.h"

#include <cmath>

Phases phasesOf(double turns, double amplitude)
{
    constexpr double fullTurn = 6.283185307179586;
    const auto component = [&](double phase) {
        return static_cast<int>(std::lround(amplitude * std::cos(fullTurn * (turns - phase))));
    };
    return {component(0), component(1.0 / 6), component(1.0 / 3)};
}
