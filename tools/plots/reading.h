#pragma once

#include <cstdio>
#include <string>
#include <sys/types.h>
#include <vector>

#include "capturefiles.h"
#include "pictures.h"
#include "recordreader.h"
#include "statistics.h"
#include "survey.h"

namespace plots {

/// Of a capture, all that pages and pictures show.
struct Contents
{
    std::string name;
    std::vector<capture::pcapng::Section> sections;
    capture::Skipped skipped;
    bool isCutOff = false;
    Survey survey;
    std::vector<statistics::SessionStatistics> statistics;
};

/// A capture that is read twice: first for what it has, then for what is drawn, so that memory does not grow
/// with the capture.
class CaptureReading
{
public:
    explicit CaptureReading(const std::string &path);
    ~CaptureReading();
    CaptureReading(const CaptureReading &) = delete;
    CaptureReading &operator=(const CaptureReading &) = delete;

    /// Prints why it can't be read, and what is missing in it.
    /// \return as the commands end; with Usage, or without a packet, nothing can be shown of it
    padscope::Status survey(Contents &contents, bool withStatistics);
    /// To be called behind survey().
    void draw(Pictures &pictures);

private:
    int descriptor() const;
    bool copyPipe();
    padscope::Status failure(const std::string &what) const;
    /// `use(reader)` for each packet, from the beginning on. \return what the reader ended with
    template <typename Use>
    capture::pcapng::Event read(capture::RecordReader &reader, Use use);

    padscope::InputFile input;
    off_t begin = 0;           ///< standard input may have been read before
    std::FILE *copy = nullptr; ///< of a pipe, which can be read only once
};

} // namespace plots
