#include "board.h"

#include "entrypoints.h"

using namespace std::chrono_literals;

constexpr auto maxDelay = 250ms;

Board::Board(const BoardPlan &plan, Tally &tally_, Vanish vanish_)
    : boardId(plan.id)
    , tally(tally_)
    , vanish(std::move(vanish_))
    , script(plan)
{
}

int Board::deliver(const unsigned char *bytes, unsigned int length)
{
    tally.count(boardId, {1, 0});
    return listeners.call([&](Listeners::Function function, void *context) {
        reinterpret_cast<OrvexDataCallback>(function)(boardId, bytes, length, context);
        tally.count(boardId, {0, 1});
    });
}

void Board::post(Message message)
{
    {
        const std::lock_guard lock(mutex);
        inbox.push_back(std::move(message));
    }
    wake.notify_all();
}

void Board::step(std::unique_lock<std::mutex> &lock)
{
    if (!inbox.empty()) {
        const Message message = std::move(inbox.front());
        inbox.pop_front();
        // What happens now may be due before the next report.
        if (std::holds_alternative<BoardEvent>(message))
            listening = false;
        lock.unlock();
        std::visit([this](const auto &one) { handle(one); }, message);
        lock.lock();
        return;
    }
    if (!script.active() || listeners.empty()) {
        listening = false;
        wake.wait(lock);
        return;
    }
    const auto now = Clock::now();
    if (!listening || now - deadline > maxDelay)
        deadline = now;
    listening = true;
    if (now < deadline) {
        wake.wait_until(lock, Clock::time_point(deadline));
        return;
    }
    lock.unlock();
    const Script::Step next = script.next();
    if (next.report)
        deliver(*next.report);
    if (next.vanishes)
        vanish(*this);
    lock.lock();
    deadline += next.wait;
}
