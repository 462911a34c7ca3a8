#pragma once

/// The three phase components of one signal, at 0, 60 and 120 degrees.
struct Phases
{
    int c0 = 0;
    int c60 = 0;
    int c120 = 0;
};

/// Largest amount of a component; more would leave the bars of the bar graph.
inline constexpr int largestComponent = 3500;

/// Components of a vector that points in the given direction.
///
/// Taken together as vectors at their angles, x = c0 + c60 / 2 - c120 / 2 and
/// y = (c60 + c120) * sqrt(3) / 2, they give a vector of that direction, 1.5 times as long as `amplitude`.
/// \param turns direction in full turns, counter-clockwise from the positive x axis
/// \param amplitude 0 to `largestComponent`
Phases phasesOf(double turns, double amplitude);
