#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sensor.h"

/// What the commands have switched; README.md lists them.
struct Switches
{
    bool streaming = true;
    bool voltages = false;
    bool statusText = false; ///< text reports of type 119
};

/// The part of a board that understands commands.
///
/// No command is the beginning of another, so each is known as soon as its last character has come: with or
/// without a carriage return, in pieces or several at once.
class Firmware
{
public:
    /// Takes the bytes of one send and carries out the commands that they complete.
    /// \return the board's answers, one for each command, ready to be sent as text
    std::vector<std::string> take(std::string_view bytes, Sensor &sensor);

    const Switches &switches() const { return state; }

private:
    std::string answer(const std::string &text);

    Switches state;
    std::string pending; ///< characters of a command that is not complete
    std::string lastAnswer;
};
