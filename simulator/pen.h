#pragma once

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

/// The pen that writes: lines of looped words with lifts between them, from the top of the board to its
/// bottom and over again.
/// \param seconds since the board started
Pen writingPen(double seconds);

/// The second pen: it wanders in wide circles and touches the board in one half of them.
Pen wanderingPen(double seconds);
