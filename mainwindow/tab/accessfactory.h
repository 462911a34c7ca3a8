#pragma once

#include <QAccessible>

/// Installs a factory of accessible objects while at least one of these lives, and removes it afterwards: a
/// plugin that is unloaded leaves none behind. GUI thread only.
template <QAccessible::InterfaceFactory Factory>
class AccessFactory
{
public:
    AccessFactory()
    {
        if (++count == 1)
            QAccessible::installFactory(Factory);
    }
    ~AccessFactory()
    {
        if (--count == 0)
            QAccessible::removeFactory(Factory);
    }
    AccessFactory(const AccessFactory &) = delete;
    AccessFactory &operator=(const AccessFactory &) = delete;

private:
    static inline int count = 0;
};
