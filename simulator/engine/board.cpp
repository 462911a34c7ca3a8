#include "board.h"

#include <new>

using namespace std::chrono_literals;

namespace {

constexpr auto greatestDelay = 250ms;

/// The bits of the transfer mask; what none of them stands for belongs to the last.
constexpr unsigned char maskedTypes[] = {
    reports::SignalReport,   reports::PhaseReport, reports::PenIdentityReport, reports::DualPenReport,
    reports::PositionReport, reports::TextReport,  reports::TextOrAdcReport};
constexpr unsigned otherTypesBit = 7;

unsigned maskBitOf(const Report &report)
{
    for (unsigned bit = 0; bit < otherTypesBit; ++bit) {
        if (report.size() > 1 && report[1] == maskedTypes[bit])
            return bit;
    }
    return otherTypesBit;
}

} // namespace

Board::Board(const BoardPlan &plan, Tally &tally_, Vanish vanish_)
    : id_(plan.id)
    , tally(tally_)
    , vanish(std::move(vanish_))
    , script(plan)
{
}

void Board::start()
{
    thread = std::thread([self = shared_from_this()] { self->run(); });
}

std::thread Board::stop()
{
    std::thread ended;
    {
        const std::lock_guard lock(mutex);
        stopping = true;
        ended.swap(thread);
    }
    wake.notify_all();
    channels.closeAll();
    listeners.removeAll();
    return ended;
}

void Board::addListener(Listeners::Function function, void *context)
{
    {
        const std::lock_guard lock(mutex);
        if (stopping)
            return;
        listeners.add(function, context);
    }
    wake.notify_all();
}

void Board::removeListener(Listeners::Function function, void *context)
{
    listeners.remove(function, context);
}

int Board::openChannel(OrvexDataCallback callback, void *context)
{
    int number = 0;
    {
        const std::lock_guard lock(mutex);
        number = channels.open(callback, context);
    }
    wake.notify_all();
    return number;
}

int Board::readChannel(int number, unsigned char *buffer, std::size_t size, unsigned int timeoutMs)
{
    return channels.read(number, buffer, size, timeoutMs);
}

void Board::call(Listeners::Function function, void *context, const unsigned char *bytes, unsigned int length)
{
    reinterpret_cast<OrvexDataCallback>(function)(id_, bytes, length, context);
    tally.delivered(id_);
}

int Board::deliver(const unsigned char *bytes, unsigned int length)
{
    tally.sent(id_);
    return listeners.call(
        [&](Listeners::Function function, void *context) { call(function, context, bytes, length); });
}

void Board::send(const Report &report)
{
    if (!passesMask(report)) {
        tally.sent(id_);
        return;
    }
    const auto length = static_cast<unsigned int>(report.size());
    deliver(report.data(), length);
    channels.put(report, [&](Listeners::Function function, void *context) {
        call(function, context, report.data(), length);
    });
}

bool Board::passesMask(const Report &report)
{
    const unsigned mask = withSettings([](const Settings &now) -> unsigned { return now.xferMask; });
    return (mask >> maskBitOf(report) & 1U) != 0;
}

void Board::command(std::string_view text)
{
    post(std::string(text));
}

void Board::loopBack(const unsigned char *bytes, std::size_t length)
{
    post(Report(bytes, bytes + length));
}

void Board::happen(const BoardEvent &event)
{
    post(event);
}

void Board::post(Message message)
{
    {
        const std::lock_guard lock(mutex);
        inbox.push_back(std::move(message));
    }
    wake.notify_all();
}

void Board::run()
{
    try {
        std::unique_lock lock(mutex);
        while (!stopping)
            step(lock);
    } catch (const std::bad_alloc &) {
        // Out of memory the board falls silent; the process that it runs in is somebody else's.
    }
}

/// Does the next thing that is to be done, or waits until there may be one.
void Board::step(std::unique_lock<std::mutex> &lock)
{
    if (!inbox.empty()) {
        const Message message = std::move(inbox.front());
        inbox.pop_front();
        // What happens now may be due before the next report.
        if (std::holds_alternative<BoardEvent>(message))
            listening = false;
        lock.unlock();
        handle(message);
        lock.lock();
        return;
    }
    if (!script.active() || !heard()) {
        listening = false;
        wake.wait(lock);
        return;
    }
    const auto now = Clock::now();
    if (!listening || now - deadline > greatestDelay)
        deadline = now;
    listening = true;
    if (now < deadline) {
        wake.wait_until(lock, Clock::time_point(deadline));
        return;
    }
    lock.unlock();
    const auto wait = sendNext();
    lock.lock();
    deadline += wait;
}

void Board::handle(const Message &message)
{
    if (const auto *text = std::get_if<std::string>(&message)) {
        script.command(*text);
    } else if (const auto *report = std::get_if<Report>(&message)) {
        send(*report);
    } else {
        script.add(std::get<BoardEvent>(message));
    }
}

/// \return the time from this step of the script to the next
std::chrono::nanoseconds Board::sendNext()
{
    const Script::Step step = script.next();
    penOnBoard = script.somethingOnBoard();
    if (step.report)
        send(*step.report);
    if (step.vanishes)
        vanish(*this);
    return step.wait;
}
