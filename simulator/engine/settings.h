#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

inline constexpr int calibrationColumns = 4;
inline constexpr int calibrationRows = 3;

inline constexpr std::size_t calibrationSize = sizeof(std::int32_t[calibrationRows][calibrationColumns][2]);

/// Calibration data as callers hand it over: two 32-bit numbers for each point.
using Calibration = std::array<unsigned char, calibrationSize>;

/// Where the driver leads what a pen or finger does.
struct Destination
{
    std::uint8_t destination = 0;
    std::uint8_t extended = 0;
};

/// What the driver has been told about one board. Only the transfer mask changes what the board sends.
struct Settings
{
    std::uint8_t xferMask = 255;
    std::map<std::pair<std::uint8_t, std::uint8_t>, Destination>
        pointingDestinations; ///< by pen and to-system
    Destination touchDestination;
    std::uint8_t touchEnabled = 1;
    std::uint8_t touchRedirection = 1;
    std::uint8_t lateDetection = 0;
    std::uint8_t twoFingerScroll = 0;
    std::uint16_t doubleClickDistance = 0;
    std::uint8_t buttonsReversed = 0;
    std::uint8_t debugMode = 0;
    std::uint32_t debugMask = 0;
    std::uint8_t calibrationMode = 0;
    std::map<int, Calibration> calibrations; ///< by sort, as orvexsim.h numbers them
};
