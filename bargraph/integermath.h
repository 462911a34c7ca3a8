#pragma once

/// Angle of the vector (x, y), counter-clockwise from the positive x axis.
/// \return 0 to 8192 in units of 1/8192 turn; 0 for the null vector; just below the positive x axis it is
///         8192, not 0
int ArcTan(int x, int y);

/// Integer square root of |v|, rounded down.
/// \return 0 to 65535; every |v| from 2^32 up gives 65535
int sqrt32(long v);
