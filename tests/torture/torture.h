#pragma once

#include <atomic>
#include <future>
#include <memory>
#include <mutex>
#include <random>
#include <vector>

#include <QString>

#include "qorvexgraph.h"
#include "support/driverlibrary.h"

/// Random things that a user, boards and a driver library do, in an order that a seed gives; the threads of
/// the library run as they will.
class Torture
{
public:
    explicit Torture(unsigned int seed);
    ~Torture();

    /// Does the next thing.
    void step();
    /// Brings everything to rest and compares what became of the packets.
    /// \return null, or what is wrong
    QString account();
    long steps() const { return stepCount; }

private:
    using Operation = void (Torture::*)();
    struct Weighted
    {
        Operation operation;
        int weight;
    };
    static const std::vector<Weighted> operations;

    int upTo(int highest) { return std::uniform_int_distribution<int>(0, highest)(random); }
    qorvexgraph *anyWindow() { return windows[static_cast<std::size_t>(upTo(int(windows.size()) - 1))]; }
    static std::size_t queuedIn(qorvexgraph *window);
    std::size_t longestQueue() const;
    QByteArray randomReport();
    void destroy(std::size_t index);

    void deliverHere();
    void deliverOnThreads();
    void switchFlood();
    void stopFlood();
    void limitFlood(std::future<void> isDone);
    void plug();
    void notice();
    void attach();
    void close();
    void hide();
    void show();
    void minimise();
    void switchTab();
    void type();
    void recall();
    void changeFont();
    void moveSliders();
    void switchBoxes();
    void stepFrequency();
    void resize();
    void paint();
    void openWindow();
    void destroyClosedWindow();
    void destroyAttachedWindow();
    void loseLibrary();
    void runEvents();

    std::mt19937 random;
    std::unique_ptr<DriverLibrary> library;
    std::vector<qorvexgraph *> windows;
    std::mutex floodMutex; ///< held while the flood is stopped
    std::atomic<bool> isFlooding{false};
    long leftInDestroyed = 0;
    long stepCount = 0;
};
