#include "diffcommand.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <set>
#include <sys/stat.h>

#include "capturefiles.h"
#include "comparison.h"
#include "diffoutput.h"
#include "options.h"
#include "seekablefile.h"

namespace {

using capture::Kind;
using capture::pcapng::Event;
using comparing::FieldRules;
using padscope::DiffOutput;
using padscope::ProgressLine;

enum Outcome
{
    Same = 0,
    Different = 1,
    Trouble = 2,
};

const std::map<std::string, std::set<Kind>> comparedKinds{
    {"report", {Kind::Report}}, {"call", {Kind::Call, Kind::Return}}, {"hotplug", {Kind::Hotplug}}};

struct DiffOptions
{
    std::string fileA;
    std::string fileB;
    std::vector<std::string> kinds{"report"};
    std::vector<std::string> maps;
    std::vector<std::string> tolerances;
    std::vector<std::string> ignored;
    std::optional<double> timesMs;
    bool isSummary = false;
};

/// One of the two.
class Side
{
public:
    Side(const std::string &path, comparing::Capture::Side side, const comparing::Selection &selection)
        : input(path)
    {
        if (!input.isOpen())
            return;
        file.emplace(input.descriptor());
        if (file->error() != 0) {
            padscope::printError(input.name() + ": " + std::strerror(file->error()));
            return;
        }
        capture.emplace(file->descriptor(), side, selection);
    }

    /// Prints what is wrong.
    /// \return false when the file can't be compared
    bool scan(ProgressLine &progress)
    {
        if (!capture)
            return false;
        struct stat info
        {
        };
        fstat(file->descriptor(), &info);
        const double size = std::max(1.0, static_cast<double>(info.st_size));
        const std::string what = "reading " + input.name();
        const Event last = capture->scan([&](std::uint64_t offset) {
            progress.show(what.c_str(), std::min(1.0, static_cast<double>(offset) / size));
        });
        progress.clear();
        return isComparable(last);
    }

    void printUnreadable() const
    {
        padscope::printErrorAt(input, capture->reader().file().offset(), "it has changed meanwhile");
    }

    std::optional<comparing::Capture> capture;

private:
    bool isComparable(Event last) const
    {
        const capture::RecordReader &reader = capture->reader();
        const capture::Skipped &skipped = reader.skipped();
        if (skipped.newVersions > 0) {
            padscope::printErrorAt(input, skipped.newVersionOffset,
                                   "a packet of a later version of the format");
            return false;
        }
        const bool isUsable = last == Event::End && capture->packets() > 0;
        if (const auto damage = padscope::damageOf(reader, last))
            padscope::printErrorAt(input, damage->offset,
                                   damage->reason + (isUsable ? "; compared up to there" : ""));
        else if (!isUsable)
            padscope::printError(input.name() + ": no packet of a capture in it");
        if (!isUsable)
            return false;
        if (skipped.cutHeaders > 0)
            padscope::printError(input.name() + ": " + std::to_string(skipped.cutHeaders) +
                                 " packets that are cut within their header are left out");
        return true;
    }

    padscope::InputFile input;
    std::optional<padscope::SeekableFile> file;
};

void printSummary(const comparing::Comparison &comparison, DiffOutput &output)
{
    for (const auto &[stream, counts] : comparison.counts())
        output.print(boardText(stream) + ' ' + nameOf(stream.kind) + ": " + std::to_string(counts.equal) +
                     " equal, " + std::to_string(counts.changed) + " changed, " +
                     std::to_string(counts.onlyInA) + " only in A, " + std::to_string(counts.onlyInB) +
                     " only in B");
}

Outcome compare(const DiffOptions &options, const comparing::Selection &selection)
{
    ProgressLine progress;
    Side a(options.fileA, comparing::Capture::Side::A, selection);
    if (!a.scan(progress))
        return Trouble;
    Side b(options.fileB, comparing::Capture::Side::B, selection);
    if (!b.scan(progress))
        return Trouble;
    DiffOutput output(progress);
    comparing::Comparison comparison(*a.capture, *b.capture, selection);
    comparison.maxTimeDifferenceMs = options.timesMs;
    if (!options.isSummary)
        comparison.onDifference = [&output](const std::string &line) { return output.print(line); };
    comparison.onProgress = [&progress](double share) { progress.show("comparing", share); };
    const bool isWhole = comparison.run();
    if (options.isSummary)
        printSummary(comparison, output);
    if (!output.flush() && padscope::statusOfOutputError() == padscope::Failed)
        return Trouble;
    progress.clear();
    if (!isWhole) {
        (a.capture->isIntact() ? b : a).printUnreadable();
        return Trouble;
    }
    return comparison.areSame() ? Same : Different;
}

/// The two parts of "FIELD=N".
std::pair<std::string, std::string> partsOf(const std::string &text)
{
    const std::size_t mark = text.find('=');
    return mark == std::string::npos ? std::pair(text, std::string())
                                     : std::pair(text.substr(0, mark), text.substr(mark + 1));
}

void checkRule(const char *option, const std::string &field, FieldRules::Outcome outcome)
{
    if (outcome == FieldRules::Outcome::UnknownField)
        throw CLI::ValidationError(option, field + " is no field of a report or a call");
    if (outcome == FieldRules::Outcome::NotNumeric)
        throw CLI::ValidationError(option, field + " is no number");
}

void addTolerance(FieldRules &rules, const std::string &text)
{
    const auto [field, number] = partsOf(text);
    double limit = 0;
    if (!CLI::detail::lexical_cast(number, limit) || !std::isfinite(limit) || limit < 0)
        throw CLI::ValidationError("--tolerance", text + " is not FIELD=N with a number from 0 on");
    checkRule("--tolerance", field, rules.tolerate(field, limit));
}

void addMap(std::map<std::int32_t, std::int32_t> &boards, const std::string &text)
{
    const auto [inA, inB] = partsOf(text);
    std::int32_t idInA = 0;
    std::int32_t idInB = 0;
    if (!CLI::detail::lexical_cast(inA, idInA) || !CLI::detail::lexical_cast(inB, idInB))
        throw CLI::ValidationError("--map", text + " is not ID=ID");
    for (const auto &[otherInA, otherInB] : boards) {
        if (otherInA == idInA || otherInB == idInB)
            throw CLI::ValidationError("--map", text + ": a board has two others");
    }
    boards[idInA] = idInB;
}

Outcome run(const DiffOptions &options)
{
    if (options.fileA == "-" && options.fileB == "-")
        throw CLI::ValidationError("B", "standard input can't be both");
    comparing::Selection selection;
    selection.kinds.clear();
    for (const std::string &kind : options.kinds)
        selection.kinds.merge(std::set(comparedKinds.at(kind)));
    for (const std::string &text : options.maps)
        addMap(selection.boardsInB, text);
    for (const std::string &field : options.ignored)
        checkRule("--ignore", field, selection.rules.ignore(field));
    for (const std::string &text : options.tolerances)
        addTolerance(selection.rules, text);
    if (options.timesMs && *options.timesMs < 0)
        throw CLI::ValidationError("--times", "it is below zero");
    padscope::ignoreBrokenPipes();
    return compare(options, selection);
}

void addRepeatable(CLI::App *command, const char *name, std::vector<std::string> &values, const char *type,
                   const char *description)
{
    command->add_option(name, values, description)->type_name(type)->allow_extra_args(false);
}

} // namespace

void addDiffCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("diff", "Compares two captures, board by board");
    const auto options = std::make_shared<DiffOptions>();
    command->add_option("A", options->fileA, "A capture; - is standard input")->type_name("")->required();
    command->add_option("B", options->fileB, "Another one")->type_name("")->required();
    command->add_option("--kinds", options->kinds, "What is compared: report, call, hotplug")
        ->type_name("NAME,...")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(padscope::oneOf({"report", "call", "hotplug"}));
    command->add_option("--times", options->timesMs, "Times may differ by at most this much")
        ->type_name("MS")
        ->check(padscope::finiteNumber());
    addRepeatable(command, "--tolerance", options->tolerances, "FIELD=N",
                  "Values of this field may differ by at most N (repeatable)");
    addRepeatable(command, "--ignore", options->ignored, "FIELD",
                  "Values of this field don't count (repeatable)");
    addRepeatable(command, "--map", options->maps, "ID=ID", "A board of A, and its number in B (repeatable)");
    command->add_flag("--summary", options->isSummary, "Only counts, by board and kind");
    command->callback([options, &status] { status = run(*options); });
}
