#include "decodecommand.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <clocale>
#include <limits>
#include <memory>
#include <poll.h>
#include <unistd.h>

#include "capturefiles.h"
#include "layoutnames.h"
#include "options.h"
#include "recordtext.h"
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
    std::vector<std::int32_t> boards;
    std::vector<std::string> types;
    std::vector<std::string> kinds;
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();
    bool follows = false;
};

std::vector<std::string> kindNames()
{
    return {
#define NAME(name, text, number) text,
        CAPTURE_KINDS(NAME)
#undef NAME
    };
}

template <typename Value, typename Wanted>
bool isAmong(const std::vector<Wanted> &wanted, const Value &value)
{
    return std::find(wanted.begin(), wanted.end(), value) != wanted.end();
}

bool isOfKind(const DecodeOptions &options, const capture::Record &record)
{
    const char *name = nameOf(record.header.kindOf());
    return options.kinds.empty() || (name && isAmong(options.kinds, name));
}

bool isOfType(const DecodeOptions &options, const capture::Record &record)
{
    const bool isReport = record.header.kindOf() == capture::Kind::Report;
    const auto isItsType = [&record](const std::string &name) { return decoding::isOfType(record, name); };
    return options.types.empty() ||
           (isReport && std::any_of(options.types.begin(), options.types.end(), isItsType));
}

bool isOfBoard(const DecodeOptions &options, const capture::Record &record)
{
    return options.boards.empty() ||
           (record.header.has(capture::BoardIsValid) && isAmong(options.boards, record.header.board));
}

bool isWanted(const DecodeOptions &options, const capture::Record &record, double seconds)
{
    return seconds >= options.from && seconds < options.to && isOfBoard(options, record) &&
           isOfKind(options, record) && isOfType(options, record);
}

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
        writer.write(record, isWanted(options, record, writer.clock().secondsOf(record)));
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

/// An option that may be given several times.
template <typename Value>
CLI::Option *addRepeatable(CLI::App *command, const char *name, std::vector<Value> &values,
                           const char *description)
{
    return command->add_option(name, values, description)->allow_extra_args(false);
}

void addFilters(CLI::App *command, DecodeOptions &options)
{
    addRepeatable(command, "--board", options.boards, "Only this board (repeatable)")->type_name("ID");
    addRepeatable(command, "--type", options.types,
                  "Only reports of this type, such as SignalReport, signal1 or unknown (repeatable)")
        ->type_name("NAME")
        ->check(padscope::oneOf(decoding::typeNames()));
    addRepeatable(command, "--kind", options.kinds,
                  "Only packets of this kind, such as report or call (repeatable)")
        ->type_name("NAME")
        ->check(padscope::oneOf(kindNames()));
    command->add_option("--from", options.from, "From this second on, counted from the first packet")
        ->type_name("S")
        ->check(padscope::finiteNumber());
    command->add_option("--to", options.to, "Before this second")
        ->type_name("S")
        ->check(padscope::finiteNumber());
    command->add_option("--limit", options.writer.limit, "At most so many lines, or rows")
        ->type_name("N")
        ->transform(padscope::wholeNumber());
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
    addFilters(command, *options);
    command->add_flag("--follow", options->follows, "Goes on while the file grows, until its end packet");
    command->callback([options, &status] { status = run(*options); });
}
