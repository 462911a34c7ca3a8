#pragma once

#include <deque>
#include <QBasicTimer>
#include <QList>
#include <QMutex>
#include <QSettings>
#include <QStringList>
#include <QTime>
#include <QWidget>

#include "tabwindow.h"

class OrvexWrapper;
class QLabel;
class QLineUpDownEdit;
class QTabWidget;
class bargraph;
class monitor;
struct _DataPacket;

/// The tool's window: status line, tabs and command line; attaches the boards and takes in their reports.
///
/// Detached when built; attaches when the first command is typed. Closing it, or hiding it other than by
/// the window system, detaches. Everything runs on the GUI thread but the two callbacks.
class qorvexgraph : public QWidget, public TabWindow
{
    Q_OBJECT

public:
    qorvexgraph();
    /// Makes no driver call and frees no packet: a host closes or hides the window first. Waits for this
    /// window's callbacks in progress on other threads, for at most a second once they emit. Not to be called
    /// inside a call of the driver library that the window makes.
    ~qorvexgraph() override;

    /// Sends a text unchanged to the first board; does nothing without a board or while detached.
    void SendCommand(const char *command) override;

    /// Settings store that the views share.
    QSettings *settingsStore() override { return &settings; }

    /// Data callback: queues one report. Runs on threads of the driver library.
    /// \param data `length` bytes, or null for none
    /// \param context the qorvexgraph
    static void DataCallback(int device, const unsigned char *data, unsigned int length, void *context);
    /// Hot-plug callback. Runs on threads of the driver library.
    /// \param context the qorvexgraph
    static void pnp(void *context);

signals:
    void DataReceived();
    void PnpHappened();

public slots:
    /// Attaches, or re-enumerates the boards when attached. Inside an attach it is deferred until that has
    /// ended; inside a detach it does nothing. Called by PnpHappened(), it does nothing from a detach until
    /// the next binding is created.
    void AttachHardware();
    /// Sends the line just typed, with a carriage return, to the first board; attaches first if need be.
    void TypedCommand();
    /// Dispatches the packets queued so far to the view on the current tab.
    void OnDataReceived();
    /// Shows the number of boards, and whether the tool is paused, in the status line.
    void ShowDevices();

protected:
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void buildTabs();
    void addTab(QWidget *view, const QString &caption);
    void arrangeWidgets();
    void attach();
    void attachLater();
    void attachAgain();
    void attachForCommand();
    void openLibrary();
    void enumerateDevices();
    void detachFromHardware();
    void sendClosingCommands();
    void sendTypedCommand(const QString &command);
    void enqueue(_DataPacket *packet);
    _DataPacket *takeFirstPacket();
    void showPacket(_DataPacket *packet);
    bool isPaused() const;
    int rateLimitMs() const;

    int displayThreshold = 50; ///< milliseconds; that of the view that was given the last packet
    std::deque<_DataPacket *> packetQueue;
    QMutex queueMutex; ///< guards packetQueue
    bool paused = true;
    QSettings settings{QLatin1String("Corvane"), QLatin1String("qorvexgraph")};
    OrvexWrapper *hardware = nullptr; ///< null while detached
    QTabWidget *tabs = nullptr;
    QLabel *statusLabel = nullptr;
    QLineUpDownEdit *commandLine = nullptr;
    QList<int> deviceIds; ///< in the order of enumeration; survives a detach
    bargraph *barGraphView = nullptr;
    monitor *monitorView = nullptr;
    bool ignoresNotifications = false; ///< from a detach until the next binding is created
    bool isAttaching = false;
    bool isDetaching = false;
    QBasicTimer attachTimer;     ///< runs while an attach is deferred by one in progress
    QStringList waitingCommands; ///< typed while the library was being opened, or behind such a command
    int dispatchDepth = 0;
    QBasicTimer dispatchTimer; ///< runs while packets wait for all dispatches to return

    friend struct Inspect;
};
