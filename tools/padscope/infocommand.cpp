#include "infocommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "capturefiles.h"
#include "escaping.h"
#include "options.h"
#include "overview.h"
#include "times.h"

namespace {

using capture::pcapng::Event;
using decoding::SessionOverview;

struct InfoOptions
{
    std::vector<std::string> files;
    std::string format = "text";
};

std::string sessionName(const SessionOverview &session)
{
    char name[16];
    std::snprintf(name, sizeof name, "%08x", session.session);
    return name;
}

double spanOf(const SessionOverview &session)
{
    return static_cast<double>(session.lastNs - session.firstNs) / 1e9;
}

/// A note may have been written by anybody: nothing in it moves a terminal's cursor.
std::string escaped(const std::string &note)
{
    std::string text;
    decoding::appendEscaped(text, note);
    return text;
}

/// Of the thread that made them, inner ones behind outer ones.
std::vector<std::string> openCallsOf(const SessionOverview &session)
{
    std::vector<std::string> texts;
    for (const auto &[thread, calls] : session.openCalls)
        for (const SessionOverview::Call &call : calls)
            texts.push_back(call.text);
    return texts;
}

void printSession(const SessionOverview &session, bool isCutOff)
{
    std::printf("  session %s: %llu packets in %.3f s, %llu lost, %s\n", sessionName(session).c_str(),
                static_cast<unsigned long long>(session.packets), spanOf(session),
                static_cast<unsigned long long>(session.lost), session.endText(isCutOff).c_str());
    std::printf("    began at   %s\n", decoding::utcText(session.firstNs).c_str());
    for (const auto &[kind, count] : session.kinds)
        std::printf("    %-10s %llu\n", kind.c_str(), static_cast<unsigned long long>(count));
    for (const auto &[id, board] : session.boards) {
        std::printf("    board %d: %llu reports, %.1f a second, %llu lost\n", id,
                    static_cast<unsigned long long>(board.reports), SessionOverview::rateOf(board),
                    static_cast<unsigned long long>(board.lost));
        for (const auto &[type, count] : board.types)
            std::printf("      %-18s %llu\n", type.c_str(), static_cast<unsigned long long>(count));
    }
    for (const std::string &call : openCallsOf(session))
        std::printf("    never returned: %s\n", call.c_str());
    for (const std::string &note : session.notes)
        std::printf("    note: %s\n", escaped(note).c_str());
}

nlohmann::ordered_json jsonOf(const SessionOverview &session, bool isCutOff)
{
    nlohmann::ordered_json boards = nlohmann::ordered_json::array();
    for (const auto &[id, board] : session.boards)
        boards.push_back({{"board", id},
                          {"reports", board.reports},
                          {"perSecond", SessionOverview::rateOf(board)},
                          {"lost", board.lost},
                          {"types", board.types}});
    return {{"session", sessionName(session)},
            {"packets", session.packets},
            {"start", decoding::utcText(session.firstNs)},
            {"seconds", spanOf(session)},
            {"lost", session.lost},
            {"end", session.endText(isCutOff)},
            {"kinds", session.kinds},
            {"boards", boards},
            {"neverReturned", openCallsOf(session)},
            {"notes", session.notes}};
}

nlohmann::ordered_json jsonOf(const std::string &name, const decoding::Overview &overview, bool isCutOff,
                              const capture::RecordReader &reader)
{
    nlohmann::ordered_json sessions = nlohmann::ordered_json::array();
    for (const SessionOverview &session : overview.sessions())
        sessions.push_back(jsonOf(session, isCutOff));
    const capture::Skipped &skipped = reader.skipped();
    return {{"file", name},
            {"cutOff", isCutOff},
            {"sessions", sessions},
            {"passedBy",
             {{"foreignPackets", skipped.foreignPackets},
              {"otherBlocks", skipped.otherBlocks},
              {"cutHeaders", skipped.cutHeaders}}}};
}

void printText(const std::string &name, const decoding::Overview &overview, bool isCutOff,
               const capture::RecordReader &reader)
{
    std::printf("%s:%s\n", name.c_str(), isCutOff ? " cut off" : "");
    for (const SessionOverview &session : overview.sessions())
        printSession(session, isCutOff);
    const capture::Skipped &skipped = reader.skipped();
    if (skipped.foreignPackets + skipped.otherBlocks + skipped.cutHeaders > 0)
        std::printf(
            "  passed by: %llu foreign packets, %llu other blocks, %llu packets cut within their header\n",
            static_cast<unsigned long long>(skipped.foreignPackets),
            static_cast<unsigned long long>(skipped.otherBlocks),
            static_cast<unsigned long long>(skipped.cutHeaders));
}

padscope::Status describe(const std::string &path, bool isJson, nlohmann::ordered_json &files)
{
    const padscope::InputFile input(path);
    if (!input.isOpen())
        return padscope::Failed;
    capture::RecordReader reader(input.descriptor());
    decoding::Overview overview;
    padscope::Completeness completeness;
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next()) {
        completeness.follow(reader.record());
        overview.follow(reader.record());
    }
    const bool isCutOff = last == Event::End && reader.file().endsWithinBlock();
    if (isJson)
        files.push_back(jsonOf(input.name(), overview, isCutOff, reader));
    else
        printText(input.name(), overview, isCutOff, reader);
    return completeness.status(input, reader, last);
}

int run(const InfoOptions &options)
{
    padscope::ignoreBrokenPipes();
    const bool isJson = options.format == "json";
    int worst = padscope::Good;
    nlohmann::ordered_json files = nlohmann::ordered_json::array();
    for (const std::string &file : options.files) {
        const int status = describe(file, isJson, files);
        if (worst != padscope::Failed && status != padscope::Good)
            worst = status;
    }
    if (isJson)
        std::printf("%s\n", files.dump(2, ' ', true, nlohmann::json::error_handler_t::replace).c_str());
    return std::fflush(stdout) == 0 && !std::ferror(stdout) ? worst : padscope::statusOfOutputError();
}

} // namespace

void addInfoCommand(CLI::App &program, int &status)
{
    CLI::App *command = program.add_subcommand("info", "Tells what captures have");
    const auto options = std::make_shared<InfoOptions>();
    command->add_option("FILE", options->files, "Captures; - is standard input")->type_name("")->required();
    command->add_option("--format", options->format, "text or json")
        ->type_name("NAME")
        ->check(padscope::oneOf({"text", "json"}));
    command->callback([options, &status] { status = run(*options); });
}
