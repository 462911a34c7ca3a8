#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "pen.h"
#include "random.h"

/// The three phase components of one signal, at 0, 60 and 120 degrees.
struct Phases
{
    int c0 = 0;
    int c60 = 0;
    int c120 = 0;
};

/// Length of one period of the fine signal, in the board's units: its dial turns once on this way, the
/// coarse one's once on the whole board.
inline constexpr int finePitch = 1000;

/// Multiples of 56.25 Hz.
inline constexpr int initialFrequency = 2000;
inline constexpr int maxFrequency = 8888;

/// Voltage readings swing between these; the tool's meter is full at 511.
inline constexpr int adcMin = 100;
inline constexpr int usualAdcMax = 500;

/// All that a board measures at one moment; every report is made from it.
struct Measurement
{
    Pen pen;
    Pen secondPen;
    bool studentWrites = false;
    Phases xFine, yFine, xCoarse, yCoarse;
    Phases offset;
    int qualityX = 0;
    int qualityY = 0;
    int quality = 0;        ///< 0 to 1000, as are the two before and the two after
    int minimumQuality = 0; ///< since the last reset of the extremes
    int maximumQuality = 0;
    int integrations = 0;     ///< 0 to 255
    int frequencyRaw = 0;     ///< 0 to `maxFrequency`
    std::uint32_t risesX = 0; ///< counts up
    std::uint32_t risesY = 0;
    int adcRaw = 0;       ///< `adcMin` to the board's `adcMax`
    char proximity = '-'; ///< 'O' the pen is on the board, 'N' near it, '-' away
};

/// What a board's electronics make of its pens: three-phase signals with noise, their quality and frequency.
class Sensor
{
public:
    explicit Sensor(std::uint32_t seed, PenPath path_ = {}, int adcMax_ = usualAdcMax)
        : random(seed)
        , path(std::move(path_))
        , adcMax(adcMax_)
    {
    }

    Measurement measure(double seconds);

    void resetExtremes() { extremesKnown = false; }
    void lockFrequency(bool on) { locked = on; }
    /// \param steps of 56.25 Hz; the frequency stays within its range
    void stepFrequency(int steps) { frequencyRaw = std::clamp(frequencyRaw + steps, 0, maxFrequency); }
    int frequency() const { return frequencyRaw; }

private:
    Phases signal(double turns, double strength);
    void measureQuality(Measurement &now);

    Random random;
    const PenPath path;
    const int adcMax;
    bool locked = false;
    int frequencyRaw = initialFrequency;
    bool extremesKnown = false;
    int minimumQuality = 0;
    int maximumQuality = 0;
    std::uint32_t risesX = 0;
    std::uint32_t risesY = 0;
};
