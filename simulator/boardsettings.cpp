#include "simulator/boundary.h"

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

} // namespace

void orvexSetXferMask(int device, std::uint8_t mask)
{
    set(device, &Settings::xferMask, mask);
}

void orvexSetPointingDeviceDestination(int device, std::uint8_t pen, std::uint8_t toSystem,
                                       std::uint8_t destination)
{
    orvexSetPointingDeviceDestinationEx(device, pen, toSystem, destination, 0);
}

void orvexSetPointingDeviceDestinationEx(int device, std::uint8_t pen, std::uint8_t toSystem,
                                         std::uint8_t destination, std::uint8_t extended)
{
    forBoards(device, [&](Board &board) {
        board.withSettings([&](Settings &settings) {
            settings.pointingDestinations[{pen, toSystem}] = {destination, extended};
        });
    });
}

int orvexGetPointingDeviceDestination(int device, std::uint8_t pen, std::uint8_t toSystem)
{
    return askBoard(device, unknownBoard, [&](Board &board) {
        return board.withSettings([&](Settings &settings) -> int {
            return settings.pointingDestinations[{pen, toSystem}].destination;
        });
    });
}

void orvexSetTouchDestination(int device, std::uint8_t destination)
{
    orvexSetTouchDestinationEx(device, destination, 0);
}

void orvexSetTouchDestinationEx(int device, std::uint8_t destination, std::uint8_t extended)
{
    set(device, &Settings::touchDestination, Destination{destination, extended});
}

int orvexGetTouchDestination(int device)
{
    return askBoard(device, unknownBoard, [](Board &board) {
        return board.withSettings(
            [](Settings &settings) -> int { return settings.touchDestination.destination; });
    });
}

void orvexSetTouchEnabled(int device, std::uint8_t enabled)
{
    set(device, &Settings::touchEnabled, enabled);
}

std::uint8_t orvexGetTouchEnabled(int device)
{
    return get(device, &Settings::touchEnabled, std::uint8_t{0});
}

void orvexSetTouchSystemRedirectionEnabled(int device, std::uint8_t enabled)
{
    set(device, &Settings::touchRedirection, enabled);
}

std::uint8_t orvexGetTouchSystemRedirectionEnabled(int device)
{
    return get(device, &Settings::touchRedirection, std::uint8_t{0});
}

void orvexSetLATEDetection(int device, std::uint8_t mode)
{
    set(device, &Settings::lateDetection, mode);
}

int orvexGetLATEDetection(int device)
{
    return get(device, &Settings::lateDetection, unknownBoard);
}

int orvexIsSomethingOnBoard(int device)
{
    return askBoard(device, 0, [](Board &board) { return board.somethingOnBoard() ? 1 : 0; });
}

void orvexSetTwoFingerScroll(int device, std::uint8_t mode)
{
    set(device, &Settings::twoFingerScroll, mode);
}

void orvexSetDoubleClickDistance(int device, std::uint16_t distance)
{
    set(device, &Settings::doubleClickDistance, distance);
}

void orvexReverseButtons(int device, std::uint8_t reversed)
{
    set(device, &Settings::buttonsReversed, reversed);
}

void orvexSetDriverDebugMode(int device, std::uint8_t mode, std::uint32_t mask)
{
    set(device, &Settings::debugMode, mode);
    set(device, &Settings::debugMask, mask);
}

int orvexSetCalibrationMode(int device, std::uint8_t mode)
{
    return tellBoards(device, [&](Board &board) {
        board.withSettings([&](Settings &settings) { settings.calibrationMode = mode; });
    });
}

void orvexGetCalibrationPoints(int device, int *columns, int *rows)
{
    forBoards(device, [&](Board &) {
        if (columns)
            *columns = calibrationColumns;
        if (rows)
            *rows = calibrationRows;
    });
}

// How long calibration data is, the caller alone knows: it is not looked at.

void orvexSetCalibrationData(int, void *) {}

void orvexSetWirelessCalibrationData(int, void *) {}

void orvexSetCalibrationDataEx(int, std::uint8_t, std::uint8_t, void *) {}

// There are no synchronous channels yet.

int orvexOpenSynchronousChannel(int, OrvexDataCallback, void *)
{
    return -1;
}

void orvexCloseSynchronousChannel(int, int) {}

int orvexReadSynchronousPacket(int, int, void *, int, unsigned int)
{
    return -1;
}
