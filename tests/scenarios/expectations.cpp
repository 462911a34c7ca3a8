#include "scenarios/expectations.h"

namespace {

constexpr char noBoard[] = "<i>No device found.</i>";
constexpr char oneBoard[] = "<b>1 device found.</b>";
constexpr char twoBoards[] = "<b>2 devices found.</b>";
constexpr char eightBoards[] = "<b>8 devices found.</b>";
constexpr char allBoards[] = "<b>32 devices found.</b>";

constexpr char signalRow[] = "^X Fine 0: [- 0-9]{5}   60: ";
constexpr char positionRow[] = "^Q: [ 0-9]{5}  Px: [ 0-9]{5} X: ";
constexpr char adcRow[] = "^Raw ADC: [0-9]+Voltage: [.0-9]+V$";
/// Characters of a report, and its bytes in hexadecimal.
constexpr char rawRow[] = "^.*  ( ?[0-9a-f]{2}){6,}";

} // namespace

const std::vector<Expectation> &expectations()
{
    static const std::vector<Expectation> all{
        {"all-kinds", oneBoard, oneBoard, adcRow, Picture::Meter, {1001}},
        {"all-types", oneBoard, oneBoard, rawRow, Picture::Still, {1001}},
        {"callback-in-command", oneBoard, oneBoard, signalRow, Picture::Bars, {1001}},
        {"default", oneBoard, oneBoard, signalRow, Picture::Bars, {1001}},
        {"enumeration-fails", twoBoards, twoBoards, signalRow, Picture::Bars, {1001, 1003}},
        {"flood",
         eightBoards,
         eightBoards,
         signalRow,
         Picture::Bars,
         {1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008}},
        {"garbage", oneBoard, oneBoard, rawRow, Picture::Any, {1001}},
        {"lying-count", oneBoard, oneBoard, signalRow, Picture::Bars, {1001}},
        {"many-boards",
         allBoards,
         allBoards,
         signalRow,
         Picture::Bars,
         {1,
          2,
          3,
          4,
          5,
          6,
          7,
          8,
          9,
          10,
          11,
          12,
          13,
          14,
          15,
          16,
          17,
          18,
          19,
          20,
          21,
          22,
          23,
          24,
          25,
          26,
          27,
          27,
          -1,
          -2,
          -2147483647 - 1,
          2147483647}},
        {"no-boards", noBoard, noBoard, nullptr, Picture::Still, {}},
        {"plug-storm", oneBoard, oneBoard, signalRow, Picture::Bars, {1001}, nullptr, 501},
        {"slow-command", oneBoard, oneBoard, signalRow, Picture::Bars, {1001}},
        // Shown 300 ms after the last of it, so never while it goes on; "." ends it.
        {"text-endless", oneBoard, oneBoard, "^[^!]{50,}", Picture::Still, {1001}, "."},
        {"text-every-byte", oneBoard, oneBoard, "0123456789", Picture::Still, {1001}},
        {"text-long", oneBoard, oneBoard, "^.{9000,}", Picture::Still, {1001}},
        {"text-markup", oneBoard, oneBoard, "<b>", Picture::Still, {1001}},
        {"timeline",
         oneBoard,
         oneBoard,
         signalRow,
         Picture::Bars,
         {1001},
         nullptr,
         3,
         {"a line of text from the timeline!.", ".!........   0a 21 04 01 02 03 04 05 06  07 "}},
        {"two-pens", twoBoards, twoBoards, positionRow, Picture::Bars, {1001, 1002}},
        {"vanish", twoBoards, oneBoard, signalRow, Picture::Bars, {1002}, nullptr, 2},
    };
    return all;
}
