#pragma once

#include <QVBoxLayout>

/// A vertical layout whose invalidation can be suppressed for a change that can't move any widget.
class SteadyLayout : public QVBoxLayout
{
    Q_OBJECT

public:
    /// While steady, requests for a new layout are ignored.
    void setSteady(bool on) { steady = on; }

    void invalidate() override
    {
        if (!steady)
            QVBoxLayout::invalidate();
    }

private:
    bool steady = false;
};
