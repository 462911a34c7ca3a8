#include "boundary.h"
#include "orvexsim.h"

#include <cstring>

// The entry points that set and get what the driver keeps for each board.

using namespace boundary;

namespace {

constexpr int unknownBoard = -1;

template <typename Value>
void set(int device, Value Settings::*member, Value value)
{
    forBoards(device, [&](Board &board) {
        board.withSettings([&](Settings &settings) { settings.*member = value; });
    });
}

template <typename Result, typename Value>
Result get(int device, Value Settings::*member, Result fallback)
{
    return askBoard(device, fallback, [&](Board &board) {
        return static_cast<Result>(board.withSettings([&](Settings &settings) { return settings.*member; }));
    });
}

void setPointingDestination(int device, std::uint8_t pen, std::uint8_t toSystem, Destination destination)
{
    forBoards(device, [&](Board &board) {
        board.withSettings([&](Settings &settings) {
            settings.pointingDestinations[{pen, toSystem}] = destination;
        });
    });
}

void setCalibration(int device, int sort, const void *data)
{
    if (!data)
        return;
    Calibration calibration;
    std::memcpy(calibration.data(), data, calibration.size());
    forBoards(device, [&](Board &board) {
        board.withSettings([&](Settings &settings) { settings.calibrations[sort] = calibration; });
    });
}

} // namespace

void orvexSetXferMask(int device, std::uint8_t mask)
{
    called(__func__, device, mask);
    set(device, &Settings::xferMask, mask);
}

void orvexSetPointingDeviceDestination(int device, std::uint8_t pen, std::uint8_t toSystem,
                                       std::uint8_t destination)
{
    called(__func__, device, pen, toSystem, destination);
    setPointingDestination(device, pen, toSystem, {destination, 0});
}

void orvexSetPointingDeviceDestinationEx(int device, std::uint8_t pen, std::uint8_t toSystem,
                                         std::uint8_t destination, std::uint8_t extended)
{
    called(__func__, device, pen, toSystem, destination, extended);
    setPointingDestination(device, pen, toSystem, {destination, extended});
}

int orvexGetPointingDeviceDestination(int device, std::uint8_t pen, std::uint8_t toSystem)
{
    called(__func__, device, pen, toSystem);
    return askBoard(device, unknownBoard, [&](Board &board) {
        return board.withSettings([&](Settings &settings) -> int {
            return settings.pointingDestinations[{pen, toSystem}].destination;
        });
    });
}

void orvexSetTouchDestination(int device, std::uint8_t destination)
{
    called(__func__, device, destination);
    set(device, &Settings::touchDestination, Destination{destination, 0});
}

void orvexSetTouchDestinationEx(int device, std::uint8_t destination, std::uint8_t extended)
{
    called(__func__, device, destination, extended);
    set(device, &Settings::touchDestination, Destination{destination, extended});
}

int orvexGetTouchDestination(int device)
{
    called(__func__, device);
    return askBoard(device, unknownBoard, [](Board &board) {
        return board.withSettings(
            [](Settings &settings) -> int { return settings.touchDestination.destination; });
    });
}

void orvexSetTouchEnabled(int device, std::uint8_t enabled)
{
    called(__func__, device, enabled);
    set(device, &Settings::touchEnabled, enabled);
}

std::uint8_t orvexGetTouchEnabled(int device)
{
    called(__func__, device);
    return get(device, &Settings::touchEnabled, std::uint8_t{0});
}

void orvexSetTouchSystemRedirectionEnabled(int device, std::uint8_t enabled)
{
    called(__func__, device, enabled);
    set(device, &Settings::touchRedirection, enabled);
}

std::uint8_t orvexGetTouchSystemRedirectionEnabled(int device)
{
    called(__func__, device);
    return get(device, &Settings::touchRedirection, std::uint8_t{0});
}

void orvexSetLATEDetection(int device, std::uint8_t mode)
{
    called(__func__, device, mode);
    set(device, &Settings::lateDetection, mode);
}

int orvexGetLATEDetection(int device)
{
    called(__func__, device);
    return get(device, &Settings::lateDetection, unknownBoard);
}

int orvexIsSomethingOnBoard(int device)
{
    called(__func__, device);
    return askBoard(device, 0, [](Board &board) { return board.somethingOnBoard() ? 1 : 0; });
}

void orvexSetTwoFingerScroll(int device, std::uint8_t mode)
{
    called(__func__, device, mode);
    set(device, &Settings::twoFingerScroll, mode);
}

void orvexSetDoubleClickDistance(int device, std::uint16_t distance)
{
    called(__func__, device, distance);
    set(device, &Settings::doubleClickDistance, distance);
}

void orvexReverseButtons(int device, std::uint8_t reversed)
{
    called(__func__, device, reversed);
    set(device, &Settings::buttonsReversed, reversed);
}

void orvexSetDriverDebugMode(int device, std::uint8_t mode, std::uint32_t mask)
{
    called(__func__, device, mode, mask);
    set(device, &Settings::debugMode, mode);
    set(device, &Settings::debugMask, mask);
}

int orvexSetCalibrationMode(int device, std::uint8_t mode)
{
    called(__func__, device, mode);
    return tellBoards(device, [&](Board &board) {
        board.withSettings([&](Settings &settings) { settings.calibrationMode = mode; });
    });
}

void orvexGetCalibrationPoints(int device, int *columns, int *rows)
{
    called(__func__, device, columns, rows);
    forBoards(device, [&](Board &) {
        if (columns)
            *columns = calibrationColumns;
        if (rows)
            *rows = calibrationRows;
    });
}

void orvexSetCalibrationData(int device, void *data)
{
    called(__func__, device, data);
    setCalibration(device, ORVEXSIM_CALIBRATION, data);
}

void orvexSetWirelessCalibrationData(int device, void *data)
{
    called(__func__, device, data);
    setCalibration(device, ORVEXSIM_WIRELESS_CALIBRATION, data);
}

void orvexSetCalibrationDataEx(int device, std::uint8_t calibrationSet, std::uint8_t kind, void *data)
{
    called(__func__, device, calibrationSet, kind, data);
    setCalibration(device, ORVEXSIM_CALIBRATION_EX, data);
}
