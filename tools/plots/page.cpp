#include "page.h"

#include <algorithm>
#include <cstdio>

#include "escaping.h"
#include "html.h"
#include "output.h"
#include "statisticstables.h"
#include "tables.h"
#include "times.h"

namespace plots {

namespace {

using decoding::SessionOverview;
std::string seconds(double number)
{
    return printed("%.6f", number);
}

std::string sessionName(std::uint32_t session)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", session);
    return text;
}

/// A text that may have been written by anybody.
std::string escaped(const std::string &bytes)
{
    std::string text;
    decoding::appendEscaped(text, bytes);
    return text;
}

std::string writerOf(const capture::pcapng::Section &section)
{
    std::string text;
    for (const std::string &part : {section.userApplication, section.operatingSystem, section.hardware}) {
        if (!part.empty())
            text += (text.empty() ? "" : ", ") + part;
    }
    return escaped(text);
}

/// One page of a capture.
class Page
{
public:
    Page(const Contents &shown, const Pictures &drawn)
        : contents(shown)
        , pictures(drawn)
        , name(escaped(shown.name.substr(shown.name.rfind('/') + 1)))
        , html("Capture " + name)
    {
    }

    QByteArray write()
    {
        html.heading(1, "Capture " + name);
        writeFile();
        const std::vector<SessionOverview> &sessions = contents.survey.overview().sessions();
        const std::size_t shown = std::min(sessions.size(), maxSessions);
        for (std::size_t i = 0; i < shown; ++i)
            writeSession(sessions[i]);
        writeRest(html, "sessions", sessions.size() - shown);
        return html.finish();
    }

private:
    void writeFile()
    {
        Rows rows;
        for (std::size_t i = 0; i < std::min(contents.sections.size(), maxSessions); ++i) {
            if (const std::string writer = writerOf(contents.sections[i]); !writer.empty())
                rows.push_back({"Written by", writer});
        }
        rows.push_back({"Sessions", std::to_string(contents.survey.overview().sessions().size())});
        if (contents.isCutOff)
            rows.push_back({"Cut off", "the file ends within a block"});
        const capture::Skipped &skipped = contents.skipped;
        if (skipped.foreignPackets + skipped.otherBlocks + skipped.cutHeaders + skipped.newVersions > 0)
            rows.push_back(
                {"Passed by", std::to_string(skipped.foreignPackets) + " foreign packets, " +
                                  std::to_string(skipped.otherBlocks) + " other blocks, " +
                                  std::to_string(skipped.cutHeaders) + " packets cut within their header, " +
                                  std::to_string(skipped.newVersions) + " packets of a later version"});
        html.table({"Capture", name}, rows);
        html.paragraph(
            "Times are seconds since the first packet. In the pictures a line is broken where nothing "
            "came for more than a second, and every peak is shown, however short it was.");
    }

    void writeSession(const SessionOverview &session)
    {
        html.heading(2, "Session " + sessionName(session.session));
        writeOverview(session);
        writeBoards(session);
        writeCalls(session);
        writeMarks(session);
        writeBoardPictures(session);
        html.heading(3, "Losses");
        html.paragraph(session.lost == 0 ? "Nothing was lost."
                                         : std::to_string(session.lost) + " packets were lost.");
        writeCharts(pictures.lossCharts(session.session));
        html.heading(3, "Statistics");
        const auto found =
            std::find_if(contents.statistics.begin(), contents.statistics.end(),
                         [&session](const auto &entry) { return entry.session == session.session; });
        if (found == contents.statistics.end())
            html.paragraph("None.");
        else
            writeStatistics(html, *found);
    }

    void writeOverview(const SessionOverview &session)
    {
        const auto span = static_cast<double>(session.lastNs - session.firstNs) / 1e9;
        Rows rows{
            {"Began at", decoding::utcText(session.firstNs)}, {"Seconds", printed("%.3f", span)},
            {"Ended", session.endText(contents.isCutOff)},    {"Packets", std::to_string(session.packets)},
            {"Lost", std::to_string(session.lost)},           {"Cut", std::to_string(session.cut)}};
        if (session.edited > 0)
            rows.push_back({"Edited", std::to_string(session.edited)});
        for (const auto &[kind, count] : session.kinds)
            rows.push_back({"Packets of kind " + kind, std::to_string(count)});
        html.heading(3, "Overview");
        html.table({"Session", sessionName(session.session)}, rows);
    }

    void writeBoards(const SessionOverview &session)
    {
        Listing listing;
        for (const auto &entry : session.boards) {
            const SessionOverview::Board &board = entry.second;
            listing.add([&] {
                return Row{boardName(entry.first), "all", std::to_string(board.reports),
                           printed("%.1f", SessionOverview::rateOf(board)), std::to_string(board.lost)};
            });
            for (const auto &type : board.types)
                listing.add([&] { return Row{"", type.first, std::to_string(type.second), "", ""}; });
        }
        html.heading(3, "Boards");
        writeTable(html, {"Board", "Reports", "Count", "A second", "Lost"}, listing, "boards");
    }

    void writeCalls(const SessionOverview &session)
    {
        Rows failed;
        for (const FailedCall &call : contents.survey.failedCalls().calls()) {
            if (call.session == session.session)
                failed.push_back({seconds(call.seconds), call.text});
        }
        html.heading(3, "Calls that failed");
        html.paragraph("Their result is negative, or 0 of orvexAttach and orvexEnumDeviceInfo.");
        const std::uint64_t count = contents.survey.failedCalls().countOf(session.session);
        writeTable(html, {"Time (s)", "Call"}, {failed, count}, "calls");
        html.heading(3, "Calls that never returned");
        Listing open;
        for (const bool hasNeverReturned : {true, false}) {
            for (const auto &[thread, calls] : session.openCalls) {
                for (const SessionOverview::Call &call : calls) {
                    const auto makeRow = [&, number = thread] {
                        return Row{hasNeverReturned ? "never returned" : "return not recorded",
                                   std::to_string(number), call.text};
                    };
                    if (session.hasNeverReturned(call) == hasNeverReturned)
                        open.add(makeRow);
                }
            }
        }
        writeTable(html, {"What", "Thread", "Call"}, open, "calls");
    }

    void writeMarks(const SessionOverview &session)
    {
        Rows rows;
        for (const Mark &mark : contents.survey.marks()) {
            if (mark.session == session.session)
                rows.push_back({seconds(mark.seconds), escaped(mark.text)});
        }
        html.heading(3, "Marks");
        writeTable(html, {"Time (s)", "Text"}, {rows, session.notes.size()}, "marks");
    }

    void writeBoardPictures(const SessionOverview &session)
    {
        auto undrawn = std::count_if(session.boards.begin(), session.boards.end(),
                                     [](const auto &entry) { return entry.second.reports > 0; });
        if (undrawn == 0)
            writePictures({session.session, std::nullopt});
        for (const BoardKey &board : contents.survey.boards()) {
            if (board.session != session.session)
                continue;
            writePictures(board);
            --undrawn;
        }
        if (undrawn > 0)
            html.paragraph(std::to_string(undrawn) + " more boards are not drawn.");
    }

    void writePictures(const BoardKey &board)
    {
        html.heading(3, board.board ? "Board " + std::to_string(*board.board) : "No board");
        const std::pair<What, const char *> sections[] = {{What::Path, "The pen's path"},
                                                          {What::Signals, "Signals"},
                                                          {What::Quality, "Quality"},
                                                          {What::Voltage, "Voltage"},
                                                          {What::Rates, "Rates and jitter"}};
        for (const auto &[what, title] : sections) {
            const std::vector<Chart> charts = pictures.charts(board, what);
            if (charts.empty() && what == What::Voltage)
                continue;
            html.heading(4, title);
            if (charts.empty())
                html.paragraph("None.");
            writeCharts(charts);
        }
    }

    void writeCharts(const std::vector<Chart> &charts)
    {
        for (const Chart &chart : charts)
            html.picture(svgOf(chart));
    }

    const Contents &contents;
    const Pictures &pictures;
    const std::string name; ///< without folders, which are the sender's own business
    Html html;
};

} // namespace

QByteArray pageOf(const Contents &contents, const Pictures &pictures)
{
    return Page(contents, pictures).write();
}

} // namespace plots
