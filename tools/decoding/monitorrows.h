#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lines.h"
#include "recordreader.h"

namespace reports {
struct Bytes;
struct Row;
} // namespace reports

namespace decoding {

/// The rows that the Monitor's log of one session would hold, in English and in Latin-1, had the tab been
/// shown all the time: repeated reports are dropped, and text is joined into lines, by the packets' times in
/// whole milliseconds.
///
/// A byte is shown as the process's character classification (LC_CTYPE) has it, as in the tool.
class MonitorRows
{
public:
    /// \param thresholdMs the Monitor's slider; without it the rate limit is not applied
    explicit MonitorRows(std::optional<int> thresholdMs)
        : limitMs(thresholdMs)
    {
    }

    /// To be called for each packet of the session, in order, also for those that are not shown.
    void follow(const capture::Record &record, Lines &lines);
    /// To be called for each report that is shown, behind follow().
    /// \param timeOfDayMs local time of day
    void show(const capture::Record &report, int timeOfDayMs, Lines &lines);
    /// To be called behind the last packet: without an end of the session, text may have become a row later.
    void finish(Lines &lines);

private:
    /// What the tool does with reports.
    enum class Intake
    {
        Shown,
        Kept, ///< while it detaches; shown with the first report after the next attach
        Dropped,
    };

    struct KeptReport
    {
        std::string bytes;
        int timeOfDayMs;
    };

    void followCall(const capture::Record &call);
    bool comesTooSoon(const reports::Bytes &bytes, int timeOfDayMs);
    void display(const reports::Bytes &bytes, int timeOfDayMs, std::uint64_t shownMs, Lines &lines);
    void addText(const reports::Bytes &bytes, int timeOfDayMs, std::uint64_t shownMs, Lines &lines);
    void completeLine(const reports::Bytes &bytes, int timeOfDayMs, Lines &lines);
    void remember(const reports::Bytes &bytes, int timeOfDayMs);
    void flushText(Lines &lines);
    void addRow(const reports::Row &row, Lines &lines);

    std::optional<int> limitMs;
    Intake intake = Intake::Shown;
    bool hasEnded = false;
    std::vector<KeptReport> kept;
    std::optional<int> lastKeptMs; ///< time of day at which the rate limit's clock was restarted
    bool hasPrevious = false;
    std::uint16_t previousChecksum = 0;
    int previousMs = 0; ///< time of day
    std::string pendingText;
    std::uint64_t pendingSinceMs = 0; ///< of the packets' stamps
};

} // namespace decoding
