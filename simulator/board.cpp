#include "simulator/board.h"

#include "driver/abstracthardwarewrapper.h"

#include <new>

using namespace std::chrono_literals;

namespace {

constexpr auto greatestDelay = 250ms;
constexpr auto oneSecond = std::chrono::nanoseconds(1s);

} // namespace

Board::Board(int id, int rate)
    : id_(id)
    , stream(id, static_cast<std::uint32_t>(id))
    , period(oneSecond / rate)
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

void Board::setRate(int perSecond)
{
    {
        const std::lock_guard lock(mutex);
        period = oneSecond / perSecond;
        deadline = Clock::now();
    }
    wake.notify_all();
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
    return listeners.call([&](Listeners::Function function, void *context) {
        reinterpret_cast<OrvexDataCallback>(function)(id_, bytes, length, context);
    });
}

void Board::deliver(const Report &report)
{
    deliver(report.data(), static_cast<unsigned int>(report.size()));
}

void Board::command(std::string_view text)
{
    post({true, Report(text.begin(), text.end())});
}

void Board::loopBack(const unsigned char *bytes, std::size_t length)
{
    post({false, Report(bytes, bytes + length)});
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
        lock.unlock();
        handle(message);
        lock.lock();
        return;
    }
    if (!stream.streaming() || listeners.empty()) {
        listening = false;
        wake.wait(lock);
        return;
    }
    const auto now = Clock::now();
    if (!listening || now - deadline > greatestDelay)
        deadline = now;
    listening = true;
    if (now < deadline) {
        wake.wait_until(lock, deadline);
        return;
    }
    deadline += period;
    const auto step = period;
    lock.unlock();
    sendNext(step);
    lock.lock();
}

void Board::handle(const Message &message)
{
    if (!message.isCommand) {
        deliver(message.bytes);
        return;
    }
    const std::string_view text(reinterpret_cast<const char *>(message.bytes.data()), message.bytes.size());
    for (const Report &answer : stream.command(text))
        deliver(answer);
}

void Board::sendNext(std::chrono::nanoseconds step)
{
    const Report report = stream.next(step);
    penOnBoard = stream.somethingOnBoard();
    deliver(report);
}
