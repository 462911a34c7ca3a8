#pragma once

#include <functional>
#include <QJsonObject>
#include <QThread>

#include "tool.h"

/// The tool attached to the boards of the simulated library, which are told to send nothing: reports come
/// from the benchmark alone. The monitor is shown.
class Session
{
public:
    explicit Session(int attaches = 1);

    /// Hands a report to the data callback. Any thread.
    void send(const QByteArray &report, int device = 1) const;

    Tool tool;
};

/// A thread that is waited for at the end of its life.
class Sender
{
public:
    explicit Sender(std::function<void()> work)
        : thread(QThread::create(std::move(work)))
    {
        thread->start();
    }
    ~Sender()
    {
        thread->wait();
        delete thread;
    }
    Sender(const Sender &) = delete;
    Sender &operator=(const Sender &) = delete;

private:
    QThread *thread;
};

/// Calls a function so many times a second, on the caller's thread, whatever the calls take.
void atRate(int perSecond, int count, const std::function<void(int)> &function);

/// Runs the event loop for a time.
void runFor(int ms);

/// Runs the event loop until the condition holds.
void runUntil(const std::function<bool()> &condition);

/// Seconds of processor time that the process has used.
double processorTime();

// Each runs one kind of session, and gives what was counted and measured.
QJsonObject streamRows(int perSecond, int seconds);
/// One queued call a report, and nothing else.
QJsonObject wakeBareWindow(int perSecond, int seconds);
QJsonObject flood(int reports);
QJsonObject clickWhileRowsCome(int perSecond, int seconds);
QJsonObject idle(const QString &shown, int seconds);
QJsonObject growRows(int reports);
QJsonObject growAttaches(int attaches, int reports);
