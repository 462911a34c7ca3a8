#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "recordreader.h"

/// What the commands that read captures share.
namespace padscope {

enum Status
{
    Good = 0,
    Failed = 1,
    Usage = 2,
    Incomplete = 3, ///< read, but it ends within a block, without a clean end, or has losses
};

/// A capture that is read; "-" is standard input.
class InputFile
{
public:
    explicit InputFile(const std::string &path);
    ~InputFile();
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;

    /// Prints why it can't be read.
    bool isOpen() const { return file >= 0; }
    /// Whether more may be written to it while it is read.
    bool canGrow() const;
    int descriptor() const { return file; }
    const std::string &name() const { return shown; }

private:
    std::string shown;
    int file;
};

/// How whole a capture is, told packet by packet.
class Completeness
{
public:
    void follow(const capture::Record &record);
    /// Every session has its end, and nothing is lost.
    bool isComplete() const;
    /// Prints damage to standard error.
    /// \param last what the reader ended with
    Status status(const InputFile &input, const capture::RecordReader &reader,
                  capture::pcapng::Event last) const;

private:
    std::map<std::uint32_t, bool> hasEnd; ///< by session
    bool hasLost = false;
};

/// Prints a line to standard error.
void printError(const std::string &line);

/// A reader of standard output that ends, such as head, then makes writing fail instead of ending the
/// process.
void ignoreBrokenPipes();

/// Prints why standard output can't be written, by errno. A reader that has ended had all it wanted, so that
/// is no failure.
Status statusOfOutputError();

} // namespace padscope
