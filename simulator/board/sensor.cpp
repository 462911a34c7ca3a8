#include "sensor.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int noise = 20;
constexpr int strongestAmplitude = 3300;
static_assert(strongestAmplitude + noise <= largestComponent, "the noise must not leave the range");

char proximityOf(const Pen &pen)
{
    if (pen.touches)
        return 'O';
    return pen.strength > 0 ? 'N' : '-';
}

} // namespace

Measurement Sensor::measure(double seconds)
{
    Measurement now;
    now.pen = firstPen(path, seconds);
    now.secondPen = wanderingPen(seconds);
    now.studentWrites = std::fmod(seconds, 16) >= 8;
    now.proximity = proximityOf(now.pen);

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
    now.adcRaw = measureVoltage(seconds);
    return now;
}

Phases Sensor::signal(double turns, double strength)
{
    Phases phases = phasesOf(turns, strength * strongestAmplitude);
    phases.c0 += random.around(noise);
    phases.c60 += random.around(noise);
    phases.c120 += random.around(noise);
    return phases;
}

void Sensor::measureQuality(Measurement &now)
{
    const int base = static_cast<int>(940 * now.pen.strength);
    now.qualityX = base + random.below(60);
    now.qualityY = base + random.below(60);
    now.quality = (now.qualityX + now.qualityY) / 2;
    minimumQuality = extremesKnown ? std::min(minimumQuality, now.quality) : now.quality;
    maximumQuality = extremesKnown ? std::max(maximumQuality, now.quality) : now.quality;
    extremesKnown = true;
    now.minimumQuality = minimumQuality;
    now.maximumQuality = maximumQuality;
}

int Sensor::measureVoltage(double seconds)
{
    const double swing = (adcMax - adcMin) / 2.0;
    const auto reading = static_cast<int>(std::lround(adcMin + swing + swing * std::sin(seconds)));
    return std::clamp(reading + random.around(5), adcMin, adcMax);
}

void Sensor::reset()
{
    locked = false;
    frequencyRaw = initialFrequency;
    extremesKnown = false;
    risesX = 0;
    risesY = 0;
}

void Sensor::stepFrequency(int steps)
{
    frequencyRaw = std::clamp(frequencyRaw + steps, 0, highestFrequency);
}
