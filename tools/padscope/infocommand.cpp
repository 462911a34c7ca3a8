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

struct FileOverview
{
    std::string name;
    std::vector<capture::pcapng::Section> sections;
    decoding::Overview packets;
    capture::Skipped skipped;
    bool isCutOff = false;
    std::optional<capture::pcapng::Damage> damage;
};

double spanOf(const SessionOverview &session)
{
    return static_cast<double>(session.lastNs - session.firstNs) / 1e9;
}

/// A text may have been written by anybody: nothing in it moves a terminal's cursor.
std::string escaped(const std::string &bytes)
{
    std::string text;
    decoding::appendEscaped(text, bytes);
    return text;
}

std::string boardName(const std::optional<std::int32_t> &id)
{
    return id ? "board " + std::to_string(*id) : "no board";
}

/// Calls that have not returned, or whose return may only be missing. Inner ones behind outer ones.
std::vector<std::string> openCallsOf(const SessionOverview &session, bool haveNeverReturned)
{
    std::vector<std::string> texts;
    for (const auto &[thread, calls] : session.openCalls)
        for (const SessionOverview::Call &call : calls)
            if (session.hasNeverReturned(call) == haveNeverReturned)
                texts.push_back(call.text);
    return texts;
}

void printSession(const SessionOverview &session, bool isCutOff)
{
    std::printf("  session %s: %llu packets in %.3f s, %llu lost, %s\n",
                padscope::sessionName(session.session).c_str(),
                static_cast<unsigned long long>(session.packets), spanOf(session),
                static_cast<unsigned long long>(session.lost), session.endText(isCutOff).c_str());
    std::printf("    began at   %s\n", decoding::utcText(session.firstNs).c_str());
    for (const auto &[kind, count] : session.kinds)
        std::printf("    %-10s %llu\n", kind.c_str(), static_cast<unsigned long long>(count));
    for (const auto &[id, board] : session.boards) {
        std::printf("    %s: %llu reports, %.1f a second, %llu lost\n", boardName(id).c_str(),
                    static_cast<unsigned long long>(board.reports), SessionOverview::rateOf(board),
                    static_cast<unsigned long long>(board.lost));
        for (const auto &[type, count] : board.types)
            std::printf("      %-18s %llu\n", type.c_str(), static_cast<unsigned long long>(count));
    }
    if (session.cut > 0)
        std::printf("    cut: %llu packets\n", static_cast<unsigned long long>(session.cut));
    if (session.edited > 0)
        std::printf("    edited: %llu packets\n", static_cast<unsigned long long>(session.edited));
    for (const std::string &call : openCallsOf(session, true))
        std::printf("    never returned: %s\n", call.c_str());
    for (const std::string &call : openCallsOf(session, false))
        std::printf("    return not recorded: %s\n", call.c_str());
    for (const std::string &note : session.notes)
        std::printf("    note: %s\n", escaped(note).c_str());
}

nlohmann::ordered_json jsonOf(const SessionOverview &session, bool isCutOff)
{
    nlohmann::ordered_json boards = nlohmann::ordered_json::array();
    for (const auto &[id, board] : session.boards)
        boards.push_back({{"board", id ? nlohmann::ordered_json(*id) : nlohmann::ordered_json()},
                          {"reports", board.reports},
                          {"perSecond", SessionOverview::rateOf(board)},
                          {"lost", board.lost},
                          {"types", board.types}});
    return {{"session", padscope::sessionName(session.session)},
            {"packets", session.packets},
            {"start", decoding::utcText(session.firstNs)},
            {"seconds", spanOf(session)},
            {"lost", session.lost},
            {"cut", session.cut},
            {"edited", session.edited},
            {"end", session.endText(isCutOff)},
            {"kinds", session.kinds},
            {"boards", boards},
            {"neverReturned", openCallsOf(session, true)},
            {"returnNotRecorded", openCallsOf(session, false)},
            {"notes", session.notes}};
}

nlohmann::ordered_json jsonOf(const capture::pcapng::Section &section)
{
    return {{"application", section.userApplication},
            {"os", section.operatingSystem},
            {"hardware", section.hardware},
            {"comment", section.comment}};
}

nlohmann::ordered_json jsonOf(const FileOverview &file)
{
    nlohmann::ordered_json damage;
    if (file.damage)
        damage = {{"offset", file.damage->offset}, {"reason", file.damage->reason}};
    nlohmann::ordered_json sections = nlohmann::ordered_json::array();
    for (const capture::pcapng::Section &section : file.sections)
        sections.push_back(jsonOf(section));
    nlohmann::ordered_json sessions = nlohmann::ordered_json::array();
    for (const SessionOverview &session : file.packets.sessions())
        sessions.push_back(jsonOf(session, file.isCutOff));
    return {{"file", file.name},
            {"cutOff", file.isCutOff},
            {"damage", damage},
            {"sections", sections},
            {"sessions", sessions},
            {"passedBy",
             {{"foreignPackets", file.skipped.foreignPackets},
              {"otherBlocks", file.skipped.otherBlocks},
              {"cutHeaders", file.skipped.cutHeaders},
              {"laterVersions", file.skipped.newVersions}}}};
}

/// "padscope 1.1, Linux 6.1, x86_64"
std::string writerOf(const capture::pcapng::Section &section)
{
    std::string text;
    for (const std::string &part : {section.userApplication, section.operatingSystem, section.hardware}) {
        if (!text.empty() && !part.empty())
            text += ", ";
        decoding::appendEscaped(text, part);
    }
    return text;
}

void printText(const FileOverview &file)
{
    std::printf("%s:%s\n", file.name.c_str(), file.isCutOff ? " cut off" : "");
    for (const capture::pcapng::Section &section : file.sections) {
        if (const std::string writer = writerOf(section); !writer.empty())
            std::printf("  written by %s\n", writer.c_str());
    }
    for (const SessionOverview &session : file.packets.sessions())
        printSession(session, file.isCutOff);
    const capture::Skipped &skipped = file.skipped;
    if (skipped.foreignPackets + skipped.otherBlocks + skipped.cutHeaders + skipped.newVersions > 0)
        std::printf("  passed by: %llu foreign packets, %llu other blocks, %llu packets cut within their "
                    "header, %llu packets of a later version\n",
                    static_cast<unsigned long long>(skipped.foreignPackets),
                    static_cast<unsigned long long>(skipped.otherBlocks),
                    static_cast<unsigned long long>(skipped.cutHeaders),
                    static_cast<unsigned long long>(skipped.newVersions));
}

/// Those in which packets stand.
void followSection(std::vector<capture::pcapng::Section> &sections, const capture::pcapng::Section &section)
{
    if (sections.empty() || sections.back().offset != section.offset)
        sections.push_back(section);
}

padscope::Status describe(const std::string &path, bool isJson, nlohmann::ordered_json &files)
{
    const padscope::InputFile input(path);
    if (!input.isOpen())
        return padscope::Failed;
    capture::RecordReader reader(input.descriptor());
    FileOverview file;
    file.name = input.name();
    padscope::Completeness completeness;
    Event last = reader.next();
    for (; last == Event::Packet; last = reader.next()) {
        completeness.follow(reader.record());
        file.packets.follow(reader.record());
        followSection(file.sections, reader.file().section());
    }
    file.skipped = reader.skipped();
    file.isCutOff = last == Event::End && reader.file().endsWithinBlock();
    file.damage = padscope::damageOf(reader, last);
    if (isJson)
        files.push_back(jsonOf(file));
    else
        printText(file);
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
