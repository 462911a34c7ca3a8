#pragma once

#include <functional>
#include <QAccessible>

/// A screen reader that listens while this lives; there is one at a time.
class Listener
{
public:
    using Hear = std::function<void(QAccessibleEvent &)>;

    explicit Listener(Hear hear = {});
    ~Listener();
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;
};
