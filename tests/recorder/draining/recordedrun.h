#pragma once

#include <map>
#include <optional>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "payloads.h"

/// What a capture says of itself.
struct CaptureFacts
{
    std::map<std::int32_t, std::uint64_t> reports; ///< board by board
    std::uint64_t lost = 0;                        ///< sum of the packets' fields
    std::uint64_t dropCount = 0;                   ///< sum of the packets' options
    QStringList calls;                             ///< numbers of the calls and returns, "1", "return 1"
    QStringList notes;
    std::optional<capture::End> end;
    QStringList interfaces;
    std::uint64_t packets = 0;
    bool isWhole = false; ///< it ends behind a block

    /// Of the end packet.
    std::uint64_t lostAtEnd() const;
};

/// `padscope record` in a folder of its own.
class RecordedRun
{
public:
    RecordedRun();

    /// Starts `padscope record OPTIONS -o FILE -- PROGRAM`.
    void start(const QStringList &program, const QStringList &options = {});
    /// Waits for its end. \return its status; 128 + n for signal n
    int finish();
    int run(const QStringList &program, const QStringList &options = {})
    {
        start(program, options);
        return finish();
    }
    /// A command as it stands.
    void startAlone(const QStringList &command);
    int runAlone(const QStringList &command)
    {
        startAlone(command);
        return finish();
    }
    /// What a file holds, such as a process's number.
    int number(const QString &name) const;
    /// Makes an empty file.
    void touch(const QString &name) const;

    void setEnvironment(const char *name, const QString &value) { environment.insert(name, value); }
    /// Preloads a library into the programs that are run.
    void preload(const QString &library);
    QString path(const QString &name) const { return folder.filePath(name); }
    QString file() const { return path("x.pcapng"); }
    bool hasFile() const;
    CaptureFacts facts() const;
    /// What the last program has printed.
    QStringList output() const { return lines(standardOutput); }
    QStringList errors() const { return lines(standardError); }

    QProcess process;

private:
    static QStringList lines(const QByteArray &text);

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QByteArray standardOutput;
    QByteArray standardError;
};

CaptureFacts factsOf(const QString &file);

/// Runs a program. \return its status and what it has printed, "0\n..."
QByteArray outputOf(const QString &program, const QStringList &arguments);
