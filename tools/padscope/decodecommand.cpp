#include "decodecommand.h"

#include <CLI/CLI.hpp>
#include <clocale>
#include <memory>
#include <poll.h>
#include <unistd.h>

#include "capturefiles.h"
#include "filters.h"
#include "options.h"
#include "writers.h"

namespace {

using capture::pcapng::Event;
using decoding::Format;
using decoding::TimeStyle;

constexpr int followIntervalMs = 100;

struct DecodeOptions
{
    std::string file;
    decoding::WriterOptions writer;
    padscope::Filters filters;
    bool follows = false;
};

/// One run over a capture.
class Decoding
{
public:
    explicit Decoding(const DecodeOptions &decodeOptions)
        : options(decodeOptions)
        , input(options.file)
        , reader(input.descriptor())
        , writer(options.writer, stdout)
    {
    }

    padscope::Status run()
    {
        if (!input.isOpen())
            return padscope::Failed;
        writer.begin();
        const padscope::Status status = decode();
        return writer.flush() ? status : padscope::statusOfOutputError();
    }

private:
    padscope::Status decode()
    {
        const bool canGrow = options.follows && input.canGrow();
        while (!writer.isFull() && writer.canPrint()) {
            if (options.follows && !input.hasMore())
                writer.flush();
            const Event event = reader.next();
            if (event == Event::Packet) {
                take(reader.record());
                continue;
            }
            if (event == Event::End && canGrow && !completeness.hasEnded()) {
                if (!waitForMore())
                    break;
                continue;
            }
            writer.finish();
            return completeness.status(input, reader, event);
        }
        return padscope::Good; // all that was asked for
    }

    void take(const capture::Record &record)
    {
        completeness.follow(record);
        writer.follow(record);
        writer.write(record, options.filters.take(record, writer.clock().secondsOf(record)));
    }

    /// \return false when nobody reads what is printed any more
    bool waitForMore()
    {
        if (!writer.flush())
            return false;
        pollfd printed{STDOUT_FILENO, 0, 0};
        return poll(&printed, 1, followIntervalMs) <= 0;
    }

    const DecodeOptions &options;
    padscope::InputFile input;
    capture::RecordReader reader;
    decoding::Writer writer;
    padscope::Completeness completeness;
};

int run(const DecodeOptions &options)
{
    if (options.writer.thresholdMs && options.writer.format != Format::Rows)
        throw CLI::ValidationError("--threshold", "needs --format rows");
    padscope::ignoreBrokenPipes();
    // Which bytes are characters is a matter of the language, as in the tool.
    if (options.writer.format == Format::Rows)
        std::setlocale(LC_CTYPE, "");
    return Decoding(options).run();
}

} // namespace

void addDecodeCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("decode", "Prints the packets of a capture, one a line");
    const auto options = std::make_shared<DecodeOptions>();
    command->add_option("FILE", options->file, "A capture; - is standard input")->type_name("")->required();
    padscope::addNamed<Format>(
        command, "--format", options->writer.format,
        {{"text", Format::Text}, {"rows", Format::Rows}, {"csv", Format::Csv}, {"jsonl", Format::JsonLines}},
        "text; rows, as the Monitor's log has them; csv; or jsonl");
    padscope::addNamed<TimeStyle>(command, "--time", options->writer.time,
                                  {{"relative", TimeStyle::Relative},
                                   {"delta", TimeStyle::Delta},
                                   {"utc", TimeStyle::Utc},
                                   {"local", TimeStyle::Local},
                                   {"epoch", TimeStyle::Epoch}},
                                  "How times are told: relative, delta, utc, local or epoch");
    command
        ->add_option("--threshold", options->writer.thresholdMs,
                     "The Monitor's rate limit for rows, as its slider sets it; without it there is none")
        ->type_name("MS")
        ->transform(padscope::wholeNumber());
    padscope::addFilters(command, options->filters);
    padscope::addKindFilter(command, options->filters);
    command->add_option("--limit", options->writer.limit, "At most so many lines, or rows")
        ->type_name("N")
        ->transform(padscope::wholeNumber());
    command->add_flag("--follow", options->follows, "Goes on while the file grows, until its end packet");
    command->callback([options, &status] { status = run(*options); });
}
