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
/// whole milliseconds. While the tool's thread is within a call of the library, reports wait.
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
    /// To be called for each report, behind follow().
    /// \param timeOfDayMs local time of day
    /// \param isWanted whether its rows are printed. A line belongs to the report that ends it
    void show(const capture::Record &report, int timeOfDayMs, bool isWanted, Lines &lines);
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

    struct Report
    {
        capture::ByteView bytes;
        int timeOfDayMs;
        bool isWanted;
    };
    struct KeptReport
    {
        std::string bytes;
        int timeOfDayMs;
        bool isWanted;
    };

    void followThread(const capture::Record &record, Lines &lines);
    void followCall(const capture::Record &call);
    bool comesTooSoon(const reports::Bytes &bytes, int timeOfDayMs);
    void displayKept(std::uint64_t stampNs, Lines &lines);
    void display(const Report &report, std::uint64_t stampNs, Lines &lines);
    void addText(const Report &report, std::uint64_t stampNs, Lines &lines);
    void completeLine(const Report &report, Lines &lines);
    void remember(capture::ByteView bytes, int timeOfDayMs);
    std::uint64_t flushStampOf(std::uint64_t stampNs) const;
    void flushText(Lines &lines);
    void addRow(const reports::Row &row, bool isWanted, Lines &lines);

    std::optional<int> limitMs;
    Intake intake = Intake::Shown;
    bool hasEnded = false;
    std::optional<std::uint64_t> monotonicOffsetNs; ///< of the monotonic clock from the stamps
    std::optional<std::uint32_t> toolThread;
    bool isWithinCall = false;  ///< the tool's thread
    bool hasKeptInCall = false; ///< since it is
    std::vector<KeptReport> kept;
    std::optional<int> lastKeptMs; ///< time of day at which the rate limit's clock was restarted
    bool hasPrevious = false;
    std::uint16_t previousChecksum = 0;
    int previousMs = 0; ///< time of day
    std::string pendingText;
    bool isPendingWanted = false;
    std::uint64_t flushStampNs = 0; ///< at which it becomes a row
};

} // namespace decoding
