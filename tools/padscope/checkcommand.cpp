#include "checkcommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "capturefile.h"
#include "capturefiles.h"
#include "checker.h"

namespace {

using capture::pcapng::Event;

struct CheckOptions
{
    std::string file;
    std::string repaired;
};

/// Copies whole blocks.
class Repair
{
public:
    explicit Repair(const std::string &path)
        : name(path)
    {
        if (!path.empty())
            file = std::make_unique<recorder::CaptureFile>(path);
    }

    bool isReady() const
    {
        if (file && !file->isOpen())
            printReason();
        return !file || file->isOpen();
    }

    void copy(capture::ByteView block)
    {
        if (!file || hasFailed)
            return;
        hasFailed = !file->write(std::string(block.text()));
        hasBlocks = hasBlocks || !hasFailed;
        if (hasFailed)
            printReason();
    }

    /// A block that is too large to be kept.
    void leaveOut(const padscope::InputFile &input, std::uint64_t offset)
    {
        if (!file)
            return;
        leavesOut = true;
        padscope::printErrorAt(input, offset, "a block above 16 MiB, which is left out of " + name);
    }

    bool isWhole() const { return !leavesOut; }

    /// \return false when there is no whole copy of the whole blocks
    bool finish(const padscope::InputFile &input)
    {
        if (!file || (hasBlocks && !hasFailed))
            return true;
        if (!hasBlocks)
            file->remove();
        if (!hasFailed)
            padscope::printError(name + ": not written: no whole block in " + input.name());
        return false;
    }

private:
    void printReason() const { padscope::printError(name + ": " + file->error()); }

    std::string name;
    std::unique_ptr<recorder::CaptureFile> file;
    bool hasBlocks = false;
    bool hasFailed = false;
    bool leavesOut = false;
};

int run(const CheckOptions &options)
{
    const padscope::InputFile input(options.file);
    if (!input.isOpen())
        return padscope::Failed;
    Repair repair(options.repaired);
    if (!repair.isReady())
        return padscope::Failed;
    capture::RecordReader reader(input.descriptor());
    padscope::Checker checker(input, reader);
    reader.onBlock = [&](capture::ByteView block) {
        if (block.size > 0)
            repair.copy(block);
        else
            repair.leaveOut(input, reader.file().offset());
    };
    reader.onPassedBy = [&](std::uint64_t frame, capture::HeaderTrouble trouble) {
        checker.followPassedBy(frame, trouble);
    };
    padscope::Completeness completeness;
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next()) {
        completeness.follow(reader.record());
        checker.follow(reader.record());
    }
    checker.finish();
    const padscope::Status status = completeness.status(input, reader, last);
    completeness.printReasons(input);
    if (!repair.finish(input))
        return padscope::Failed;
    if (options.repaired.empty())
        return checker.faults() > 0 ? padscope::Failed : status;
    const bool isWhole = status == padscope::Good && checker.faults() == 0 && repair.isWhole();
    return isWhole ? padscope::Good : padscope::Incomplete;
}

} // namespace

void addCheckCommand(CLI::App &program, int &status)
{
    CLI::App *command =
        program.add_subcommand("check", "Checks structure, sequence, times and totals of a capture");
    const auto options = std::make_shared<CheckOptions>();
    command->add_option("FILE", options->file, "A capture; - is standard input")->type_name("")->required();
    command
        ->add_option("--repair", options->repaired,
                     "Writes the whole blocks to a new file; overwrites nothing")
        ->type_name("OUT");
    command->callback([options, &status] { status = run(*options); });
}
