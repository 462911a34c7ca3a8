#pragma once

#include <QAccessible>
#include <QBasicTimer>
#include <QObject>

class QWidget;

/// Announces a label's text to assistive programs: the newest one, at most once a second.
///
/// Costs a comparison per text while no such program listens. GUI thread only.
class RowAnnouncer : public QObject, private QAccessible::ActivationObserver
{
    // Without Q_OBJECT: neither signals nor slots.

public:
    /// Owned by the label.
    explicit RowAnnouncer(QWidget *label);
    ~RowAnnouncer() override;
    RowAnnouncer(const RowAnnouncer &) = delete;
    RowAnnouncer &operator=(const RowAnnouncer &) = delete;

    /// To be called after each change of the text.
    void textChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void accessibilityActiveChanged(bool active) override;

    QWidget *const label;
    bool isListenedTo;
    QBasicTimer secondEnd; ///< runs from the first text that is not announced yet

    friend struct Inspect;
};
