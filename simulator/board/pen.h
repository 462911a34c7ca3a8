#pragma once

#include <vector>

/// Extent of a board in its own units of a tenth of a millimetre.
inline constexpr int boardWidth = 16000;
inline constexpr int boardHeight = 12000;

/// One pen at one moment.
struct Pen
{
    double x = 0; ///< 0 to `boardWidth`
    double y = 0; ///< 0 to `boardHeight`
    /// How well the board hears the pen: 1 when it touches, less when it hovers, 0 when it is away.
    double strength = 0;
    bool touches = false;
    int buttons = 0; ///< a bit for each button that is held down
};

/// Where the first pen goes.
struct PenPath
{
    struct Point
    {
        double seconds = 1; ///< from here to the next point, more than 0
        double x = 0;
        double y = 0;
        bool touches = false; ///< on the way to the next point
    };

    bool away = false;           ///< there is no pen
    std::vector<Point> points{}; ///< over and over again; when there are none the pen writes
};

/// The first pen, on its path.
/// \param seconds since the board started
Pen firstPen(const PenPath &path, double seconds);

/// The second pen: it wanders in wide circles and touches the board in one half of them.
Pen wanderingPen(double seconds);
