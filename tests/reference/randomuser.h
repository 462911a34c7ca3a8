#pragma once

#include <functional>
#include <QImage>
#include <QRandomGenerator>
#include <QString>

#include "reference/observed.h"
#include "reference/shownwindow.h"

/// Drives the "Monitor" tab as users, boards and hosts do. The actions follow from the seed alone, and not
/// from what the tab does.
class RandomUser
{
public:
    using AddRow = std::function<void(monitor *view, const QString &first, const QString &second)>;
    /// Returns when nothing is deferred any more.
    using Settle = std::function<void()>;

    RandomUser(ShownWindow &shown, quint32 seed, AddRow addRow, Settle settle);

    Observed step();

private:
    int below(int bound) { return random.bounded(bound); }
    int between(int low, int high) { return random.bounded(low, high + 1); }
    QString act();
    QString addRows();
    QString addRowsAndGrab();
    QString addRowsAndEditSoon();
    QString pressKey();
    QString useMouse();
    QString dragHeader();
    QString resize();
    QString changeTab();
    QString changeFont();
    QString changePalette();
    QString changeStyleSheet();
    QString changeView();
    QString changeItem();
    QString edit();
    QString rowText();
    QTreeView *rows() const { return shown.rows(); }
    QModelIndex someRow();

    ShownWindow &shown;
    QRandomGenerator random;
    AddRow addRow;
    Settle settle;
    QImage grabbed;
};
