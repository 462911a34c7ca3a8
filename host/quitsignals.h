#pragma once

#include <QObject>

/// Turns SIGINT and SIGTERM into a Qt signal. The second of a kind ends the process at once, in case it
/// hangs. One object at a time.
class QuitSignals : public QObject
{
    Q_OBJECT

public:
    QuitSignals();
    ~QuitSignals() override;

signals:
    void quitRequested();

private:
    void drain();

    int pipe_[2] = {-1, -1};
};
