#include "board.h"

#include <new>

using namespace std::chrono_literals;

namespace {

constexpr auto greatestDelay = 250ms;

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

int Board::deliver(const unsigned char *bytes, unsigned int length)
{
    tally.count(id_, {1, 0});
    return listeners.call([&](Listeners::Function function, void *context) {
        reinterpret_cast<OrvexDataCallback>(function)(id_, bytes, length, context);
        tally.count(id_, {0, 1});
    });
}

void Board::command(std::string_view text)
{
    post(std::string(text));
}

void Board::send(Report report)
{
    post(std::move(report));
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
    if (!script.active() || listeners.empty()) {
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
        deliver(*report);
    } else {
        script.add(std::get<BoardEvent>(message));
    }
}

/// \return the time from this step of the script to the next
std::chrono::nanoseconds Board::sendNext()
{
    const Script::Step step = script.next();
    if (step.report)
        deliver(*step.report);
    if (step.vanishes)
        vanish(*this);
    return step.wait;
}
