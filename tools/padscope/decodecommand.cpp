#include "decodecommand.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <csignal>
#include <limits>
#include <memory>
#include <unistd.h>

#include "capturefiles.h"
#include "recordtext.h"
#include "writers.h"

namespace {

using capture::pcapng::Event;

constexpr unsigned followIntervalUs = 100'000;

struct DecodeOptions
{
    std::string file;
    decoding::Format format = decoding::Format::Text;
    decoding::TimeStyle time = decoding::TimeStyle::Relative;
    std::vector<std::int32_t> boards;
    std::vector<std::string> types;
    std::vector<std::string> kinds;
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();
    std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
    bool follows = false;
};

template <typename Value, typename Wanted>
bool isAmong(const std::vector<Wanted> &wanted, const Value &value)
{
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), value) != wanted.end();
}

std::string textOrEmpty(const char *text)
{
    return text ? text : "";
}

bool isWanted(const DecodeOptions &options, const capture::Record &record, double seconds)
{
    const bool hasBoard = record.header.has(capture::BoardIsValid);
    return isAmong(options.kinds, textOrEmpty(nameOf(record.header.kindOf()))) &&
           isAmong(options.types, textOrEmpty(decoding::reportNameOf(record))) &&
           (options.boards.empty() || (hasBoard && isAmong(options.boards, record.header.board))) &&
           seconds >= options.from && seconds < options.to;
}

/// \return false when nobody reads any more
bool decodeAll(const DecodeOptions &options, capture::RecordReader &reader, decoding::Writer &writer,
               padscope::Completeness &completeness, Event &last)
{
    std::uint64_t shown = 0;
    for (last = reader.next(); shown < options.limit; last = reader.next()) {
        if (last == Event::End && options.follows) {
            if (std::fflush(stdout) != 0)
                return false;
            usleep(followIntervalUs);
            continue;
        }
        if (last != Event::Packet)
            break;
        const capture::Record &record = reader.record();
        completeness.follow(record);
        writer.follow(record);
        if (!isWanted(options, record, writer.clock().secondsOf(record)))
            continue;
        if (!writer.write(record))
            return false;
        ++shown;
        if (options.follows && record.header.kindOf() == capture::Kind::End)
            break;
    }
    return std::fflush(stdout) == 0;
}

int run(const DecodeOptions &options)
{
    const padscope::InputFile input(options.file);
    if (!input.isOpen())
        return padscope::Failed;
    // A reader that ends, such as head, ends the writing quietly.
    std::signal(SIGPIPE, SIG_IGN);
    capture::RecordReader reader(input.descriptor());
    decoding::Writer writer(options.format, options.time, stdout);
    padscope::Completeness completeness;
    Event last = Event::End;
    writer.begin();
    if (!decodeAll(options, reader, writer, completeness, last))
        return padscope::Failed;
    if (last == Event::Packet)
        return padscope::Good; // all that was asked for
    return completeness.status(input, reader, last);
}

template <typename Value>
CLI::Option *addNamed(CLI::App *command, const char *name, Value &value,
                      const std::map<std::string, Value> &names, const char *description)
{
    return command->add_option(name, value, description)
        ->transform(CLI::CheckedTransformer(names))
        ->type_name("NAME");
}

} // namespace

void addDecodeCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("decode", "Prints the packets of a capture, one a line");
    const auto options = std::make_shared<DecodeOptions>();
    command->add_option("FILE", options->file, "A capture; - is standard input")->required();
    addNamed(command, "--format", options->format,
             {{"text", decoding::Format::Text},
              {"csv", decoding::Format::Csv},
              {"jsonl", decoding::Format::JsonLines}},
             "text, csv or jsonl");
    addNamed(command, "--time", options->time,
             {{"relative", decoding::TimeStyle::Relative},
              {"delta", decoding::TimeStyle::Delta},
              {"utc", decoding::TimeStyle::Utc},
              {"local", decoding::TimeStyle::Local},
              {"epoch", decoding::TimeStyle::Epoch}},
             "How times are told: relative, delta, utc, local or epoch");
    command->add_option("--board", options->boards, "Only this board (repeatable)")
        ->type_name("ID")
        ->take_all();
    command
        ->add_option("--type", options->types, "Only reports of this type, such as SignalReport (repeatable)")
        ->type_name("NAME");
    command
        ->add_option("--kind", options->kinds,
                     "Only packets of this kind, such as report or call (repeatable)")
        ->type_name("NAME");
    command->add_option("--from", options->from, "From this second on, counted from the first packet")
        ->type_name("S");
    command->add_option("--to", options->to, "Before this second")->type_name("S");
    command->add_option("--limit", options->limit, "At most so many")->type_name("N");
    command->add_flag("--follow", options->follows, "Goes on while the file grows, until its end packet");
    command->callback([options, &status] { status = run(*options); });
}
