#include "sensor.h"

#include <cmath>

constexpr int noise = 20;
constexpr int maxAmplitude = 3300; // of a component; more than 3500 would leave the bars of the bar graph

Measurement Sensor::measure(double seconds)
{
    Measurement now;
    now.pen = firstPen(path, seconds);
    now.secondPen = wanderingPen(seconds);
    now.studentWrites = std::fmod(seconds, 16) >= 8;
    now.proximity = now.pen.touches ? 'O' : now.pen.strength > 0 ? 'N' : '-';

    now.xFine = signal(now.pen.x / finePitch, now.pen.strength);
    now.yFine = signal(now.pen.y / finePitch, now.pen.strength);
    now.xCoarse = signal(now.pen.x / boardWidth, now.pen.strength);
    now.yCoarse = signal(now.pen.y / boardHeight, now.pen.strength);
    now.offset = {random.around(9), random.around(9), random.around(9)};
    measureQuality(now);

    if (!locked && random.below(8) == 0)
        stepFrequency(random.around(1));
    now.frequencyRaw = frequencyRaw;
    now.integrations = 64 + random.below(8);
    now.risesX = risesX += static_cast<std::uint32_t>(random.below(4));
    now.risesY = risesY += static_cast<std::uint32_t>(random.below(4));
    const double swing = (adcMax - adcMin) / 2.0;
    const auto reading = static_cast<int>(std::lround(adcMin + swing + swing * std::sin(seconds)));
    now.adcRaw = std::clamp(reading + random.around(5), adcMin, adcMax);
    return now;
}

/// Components of a vector that points in a direction, with noise.
///
/// Taken together as vectors at their angles, x = c0 + c60 / 2 - c120 / 2 and
/// y = (c60 + c120) * sqrt(3) / 2, they give a vector of that direction, 1.5 times as long as the amplitude.
/// \param turns counter-clockwise from the positive x axis
Phases Sensor::signal(double turns, double strength)
{
    constexpr double fullTurn = 6.283185307179586;
    const auto component = [&](double phase) {
        return static_cast<int>(std::lround(strength * maxAmplitude * std::cos(fullTurn * (turns - phase))));
    };
    Phases phases{component(0), component(1.0 / 6), component(1.0 / 3)};
    for (int *noisy : {&phases.c0, &phases.c60, &phases.c120})
        *noisy += random.around(noise);
    return phases;
}

void Sensor::measureQuality(Measurement &now)
{
    const int base = static_cast<int>(940 * now.pen.strength);
    now.qualityX = base + random.below(60);
    now.qualityY = base + random.below(60);
    now.quality = (now.qualityX + now.qualityY) / 2;
    now.minimumQuality = minimumQuality = std::min(extremesKnown ? minimumQuality : now.quality, now.quality);
    now.maximumQuality = maximumQuality = std::max(extremesKnown ? maximumQuality : now.quality, now.quality);
    extremesKnown = true;
}
