#pragma once

#include <cstdint>
#include <map>
#include <optional>
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
    /// In bytes; 0 when it is not known, as of a pipe.
    std::uint64_t size() const;
    /// Whether reading does not wait.
    bool hasMore() const;
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
    bool hasPackets() const { return !sessions.empty(); }
    bool hasEnded() const;   ///< every session
    bool isComplete() const; ///< and nothing is lost
    /// Prints to standard error what it is that a session lacks.
    void printReasons(const InputFile &input) const;
    /// Prints damage, and what a later version has written, to standard error.
    /// \param last what the reader ended with
    Status status(const InputFile &input, const capture::RecordReader &reader,
                  capture::pcapng::Event last) const;
    /// The same for whoever makes something of the whole capture: Usage when that can't be, since it is
    /// damaged or has no packet of a capture.
    Status statusOfWhole(const InputFile &input, const capture::RecordReader &reader,
                         capture::pcapng::Event last) const;

private:
    struct Session
    {
        bool hasEnd = false; ///< its last packet is one
        std::uint64_t lost = 0;

        bool isComplete() const { return hasEnd && lost == 0; }
    };

    std::map<std::uint32_t, Session> sessions;
};

/// What hinders a file from being read to the end of a block; also that it is empty.
/// \param last what the reader ended with
std::optional<capture::pcapng::Damage> damageOf(const capture::RecordReader &reader,
                                                capture::pcapng::Event last);

/// "5f0c93a1"
std::string sessionName(std::uint32_t session);

/// Prints a line that names file and place to standard error.
void printErrorAt(const InputFile &input, std::uint64_t offset, const std::string &what);

/// Prints a line to standard error, without control characters that a name in it may have.
void printError(const std::string &line);

/// A reader of standard output that ends, such as head, then makes writing fail instead of ending the
/// process.
void ignoreBrokenPipes();

/// Prints why standard output can't be written, by errno. A reader that has ended had all it wanted, so that
/// is no failure.
Status statusOfOutputError();

} // namespace padscope
