#pragma once

#include <QVBoxLayout>

/// A column of widgets that can be told not to be laid out again for a change that can't move any of them.
class SteadyLayout : public QVBoxLayout
{
    Q_OBJECT

public:
    /// While steady, widgets that ask for another size are not heard.
    void setSteady(bool on) { steady = on; }

    void invalidate() override
    {
        if (!steady)
            QVBoxLayout::invalidate();
    }

private:
    bool steady = false;
};
