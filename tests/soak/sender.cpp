#include "soak/sender.h"

#include <array>
#include <chrono>

namespace {

constexpr std::size_t firstComponent = 13;
constexpr std::size_t endOfComponents = 37;

using Report = std::array<unsigned char, 40>;

/// Moves the twelve components, two bytes each, up and down between -3200 and 3200, no two alike.
void advance(Report &report, long step)
{
    for (std::size_t i = firstComponent; i < endOfComponents; i += 2) {
        const long sawtooth = (step * 16 + static_cast<long>(i) * 300) % 6400;
        const auto value = static_cast<unsigned int>(sawtooth - 3200);
        report[i] = static_cast<unsigned char>(value);
        report[i + 1] = static_cast<unsigned char>(value >> 8U);
    }
}

} // namespace

Sender::Sender(decltype(&orvexsim_send) send, int board, int perSecond)
    : thread_(&Sender::run, this, send, board, perSecond)
{
}

Sender::~Sender()
{
    stopping_ = true;
    thread_.join();
}

void Sender::run(decltype(&orvexsim_send) send, int board, int perSecond)
{
    Report report{40, 47, 1};
    const std::chrono::nanoseconds interval = std::chrono::nanoseconds(std::chrono::seconds(1)) / perSecond;
    auto due = std::chrono::steady_clock::now();
    for (long step = 0; !stopping_; ++step) {
        advance(report, step);
        send(board, report.data(), static_cast<unsigned int>(report.size()));
        due += interval;
        std::this_thread::sleep_until(due);
    }
}
