#include "checkcommand.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

#include "capturefile.h"
#include "capturefiles.h"
#include "payloads.h"

namespace {

using capture::pcapng::Event;

struct CheckOptions
{
    std::string file;
    std::string repaired;
};

/// What must hold from packet to packet of a session.
class Checker
{
public:
    void follow(const capture::Record &record)
    {
        Session &session = sessions[record.header.session];
        if (session.hasPackets && record.timeNs <= session.timeNs)
            reportFault(record, "its time is not later than the packet's before");
        session.timeNs = record.timeNs;
        followSequence(record, session);
        if (record.dropCount != 0 && record.dropCount != record.header.lost)
            reportFault(record, "its drop count is not what it says is lost");
        session.lost += record.header.lost;
        if (record.header.kindOf() == capture::Kind::Report)
            ++session.reports[record.header.board];
        if (record.header.kindOf() == capture::Kind::End)
            compareTotals(record, session);
    }

    std::uint64_t faults() const { return count; }

private:
    struct Session
    {
        bool hasPackets = false;
        bool hasGaps = false; ///< somebody took packets out, which is no fault
        std::uint64_t timeNs = 0;
        std::uint64_t sequence = 0;
        std::uint64_t lost = 0;
        std::map<std::int32_t, std::uint64_t> reports;
    };

    void reportFault(const capture::Record &record, const std::string &what)
    {
        ++count;
        padscope::printError("byte " + std::to_string(record.offset) + ", packet " +
                             std::to_string(record.frame) + ": " + what);
    }

    void followSequence(const capture::Record &record, Session &session)
    {
        const std::uint64_t next = session.hasPackets ? session.sequence + 1 : 0;
        const std::uint64_t sequence = record.header.sequence;
        if (sequence < next)
            reportFault(record, "its sequence is not higher than the packet's before");
        else if (sequence - next < record.header.lost)
            reportFault(record, "more are lost than are missing");
        else if (sequence - next > record.header.lost)
            session.hasGaps = true;
        session.hasPackets = true;
        session.sequence = sequence;
    }

    void compareTotals(const capture::Record &record, const Session &session)
    {
        const auto end = capture::endOf(record.payload);
        if (!end) {
            reportFault(record, "an end packet that is too short");
            return;
        }
        std::uint64_t lost = 0;
        for (const capture::BoardCounts &counts : end->boards) {
            lost += counts.lost;
            if (counts.recorded + counts.lost != counts.delivered)
                reportFault(record, "board " + std::to_string(counts.board) +
                                        ": recorded and lost are not delivered");
            if (!session.hasGaps)
                compareReports(record, session, counts);
        }
        if (!session.hasGaps && lost > session.lost)
            reportFault(record, std::to_string(lost) + " reports are lost, and not " +
                                    std::to_string(session.lost) + " as the packets say");
    }

    void compareReports(const capture::Record &record, const Session &session,
                        const capture::BoardCounts &counts)
    {
        const auto found = session.reports.find(counts.board);
        const std::uint64_t reports = found == session.reports.end() ? 0 : found->second;
        if (reports != counts.recorded)
            reportFault(record, "board " + std::to_string(counts.board) + " has " + std::to_string(reports) +
                                    " reports, and not the recorded " + std::to_string(counts.recorded));
    }

    std::map<std::uint32_t, Session> sessions;
    std::uint64_t count = 0;
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
        if (!file || block.size == 0 || hasFailed)
            return;
        hasFailed = !file->write(std::string(block.text()));
        hasBlocks = hasBlocks || !hasFailed;
        if (hasFailed)
            printReason();
    }

    /// \return false when there is no whole copy of the whole blocks
    bool finish()
    {
        if (file && !hasBlocks)
            file->remove();
        return !file || (hasBlocks && !hasFailed);
    }

private:
    void printReason() const { padscope::printError(name + ": " + file->error()); }

    std::string name;
    std::unique_ptr<recorder::CaptureFile> file;
    bool hasBlocks = false;
    bool hasFailed = false;
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
    reader.onBlock = [&repair](capture::ByteView block) { repair.copy(block); };
    Checker checker;
    padscope::Completeness completeness;
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next()) {
        completeness.follow(reader.record());
        checker.follow(reader.record());
    }
    const int status = completeness.status(input, reader, last);
    if (reader.file().endsWithinBlock() && last == Event::End)
        padscope::printError(input.name() + ": byte " + std::to_string(reader.file().offset()) +
                             ": it ends within a block");
    if (!repair.finish())
        return padscope::Failed;
    if (!options.repaired.empty())
        return status == padscope::Good && checker.faults() == 0 ? padscope::Good : padscope::Incomplete;
    return checker.faults() > 0 ? padscope::Failed : status;
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
