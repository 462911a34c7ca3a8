#include "channels.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr std::size_t mostKept = 1024;

} // namespace

int Channels::open(OrvexDataCallback callback, void *context)
{
    const std::lock_guard lock(mutex);
    if (ended)
        return -1;
    auto channel = std::make_shared<Channel>();
    channel->listeners.add(reinterpret_cast<Listeners::Function>(callback), context);
    channels.emplace(++last, std::move(channel));
    return last;
}

void Channels::close(int number)
{
    Found leaving;
    {
        const std::lock_guard lock(mutex);
        const auto match = channels.find(number);
        if (match == channels.end())
            return;
        match->second->closed = true;
        leaving.push_back(match->second);
        channels.erase(match);
    }
    changed.notify_all();
    end(leaving);
}

void Channels::closeAll()
{
    Found leaving;
    {
        const std::lock_guard lock(mutex);
        ended = true;
        for (const auto &[number, channel] : channels) {
            channel->closed = true;
            leaving.push_back(channel);
        }
        channels.clear();
    }
    changed.notify_all();
    end(leaving);
}

void Channels::end(const Found &leaving)
{
    for (const auto &channel : leaving)
        channel->listeners.removeAll();
}

bool Channels::anyOpen() const
{
    const std::lock_guard lock(mutex);
    return !channels.empty();
}

Channels::Found Channels::keep(const Report &report)
{
    const std::lock_guard lock(mutex);
    Found found;
    for (const auto &[number, channel] : channels) {
        if (channel->reports.size() == mostKept)
            channel->reports.pop_front();
        channel->reports.push_back(report);
        found.push_back(channel);
    }
    if (!found.empty())
        changed.notify_all();
    return found;
}

int Channels::read(int number, unsigned char *buffer, std::size_t size, unsigned int timeoutMs)
{
    std::unique_lock lock(mutex);
    const auto match = channels.find(number);
    if (match == channels.end())
        return -1;
    const std::shared_ptr<Channel> channel = match->second;
    changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                     [&] { return channel->closed || !channel->reports.empty(); });
    if (channel->closed)
        return -1;
    if (channel->reports.empty())
        return 0;
    const Report report = std::move(channel->reports.front());
    channel->reports.pop_front();
    const std::size_t count = std::min(size, report.size());
    std::copy_n(report.begin(), count, buffer);
    return static_cast<int>(count);
}
