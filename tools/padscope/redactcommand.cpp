#include "redactcommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "capturefiles.h"
#include "newfile.h"
#include "options.h"
#include "progress.h"
#include "redactedblock.h"
#include "redactor.h"

namespace {

using capture::pcapng::Event;

struct RedactOptions
{
    std::string file;
    std::string output;
};

/// One run over a capture.
class Redaction
{
public:
    explicit Redaction(const RedactOptions &redactOptions)
        : options(redactOptions)
        , input(options.file)
        , reader(input.descriptor())
    {
    }

    int run()
    {
        if (!input.isOpen())
            return padscope::Usage;
        output = std::make_unique<padscope::NewFile>(options.output, padscope::NewFile::Access::Umask);
        const Event last = output->error().empty() ? copy() : Event::End;
        if (!output->error().empty())
            return outputFailed();
        const padscope::Status status = completeness.statusOfWhole(input, reader, last);
        if (status == padscope::Usage || !completeness.hasPackets())
            return status; // why is told already
        if (!output->finish())
            return outputFailed();
        printSummary();
        if (std::fflush(stdout) != 0 || std::ferror(stdout))
            return padscope::statusOfOutputError();
        return status;
    }

private:
    Event copy()
    {
        padscope::Progress progress(input.size());
        reader.onBlock = [this](capture::ByteView block) { copyBlock(block); };
        Event event = reader.next();
        for (; event == Event::Packet && output->error().empty(); event = reader.next()) {
            const capture::pcapng::Reader &file = reader.file();
            progress.follow(file.block().size);
            completeness.follow(reader.record());
            output->write(
                redacting::packetBlock(file.block(), file.byteOrder(), redactor.redacted(reader.record())));
            comments += file.packet().comments.size();
        }
        return event;
    }

    /// Those without packets that are known. Whatever else there is may hold anything.
    void copyBlock(capture::ByteView block)
    {
        namespace pcapng = capture::pcapng;
        constexpr std::size_t sectionLength = 16;
        std::string bytes(block.text());
        switch (capture::integerAt<std::uint32_t>(block, 0, reader.file().byteOrder())) {
        case pcapng::SectionHeader:
            bytes.replace(sectionLength, 8, 8, '\xFF'); // not known: blocks may be left out
            break;
        case pcapng::InterfaceDescription:
        case pcapng::InterfaceStatistics:
            break;
        default:
            return;
        }
        output->write(bytes);
    }

    int outputFailed() const
    {
        padscope::printError(options.output + ": " + output->error());
        return padscope::Failed;
    }

    void printSummary() const
    {
        std::printf("%s:\n", options.output.c_str());
        for (const auto &[name, entry] : redactor.entries()) {
            std::printf("  %s: %llu packets, %llu edited\n", name.c_str(),
                        static_cast<unsigned long long>(entry.count),
                        static_cast<unsigned long long>(entry.edited));
            if (!entry.blanked.empty())
                std::printf("    blanked: %s\n", entry.blanked.c_str());
            if (!entry.left.empty())
                std::printf("    left: %s\n", entry.left.c_str());
        }
        std::printf("  blanked in all reports: bytes that no field has\n");
        std::printf("  left in all packets: times, lengths, types, boards, results and counters\n");
        if (comments > 0)
            std::printf("  left: %llu comments, those of marks included\n",
                        static_cast<unsigned long long>(comments));
        const capture::Skipped &skipped = reader.skipped();
        const std::uint64_t leftOut =
            skipped.foreignPackets + skipped.otherBlocks + skipped.cutHeaders + skipped.newVersions;
        if (leftOut > 0)
            std::printf("  left out: %llu blocks that are not known\n",
                        static_cast<unsigned long long>(leftOut));
    }

    const RedactOptions &options;
    padscope::InputFile input;
    capture::RecordReader reader;
    std::unique_ptr<padscope::NewFile> output;
    padscope::Completeness completeness;
    redacting::Redactor redactor;
    std::uint64_t comments = 0;
};

} // namespace

void addRedactCommand(CLI::App &program, int &status)
{
    CLI::App *command =
        program.add_subcommand("redact", "Copies a capture without what a pen's position follows from");
    const auto options = std::make_shared<RedactOptions>();
    command->add_option("FILE", options->file, "A capture; - is standard input")->type_name("")->required();
    command->add_option("-o,--output", options->output, "The new capture; overwrites nothing")
        ->type_name("OUT")
        ->required()
        ->check(padscope::newFile());
    command->callback([options, &status] {
        padscope::ignoreBrokenPipes();
        status = Redaction(*options).run();
    });
}
