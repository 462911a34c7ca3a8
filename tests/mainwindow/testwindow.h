#pragma once

#include <functional>
#include <QHideEvent>
#include <QLabel>
#include <QRegularExpression>
#include <QTabWidget>

#include "mainwindow/inspect.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "support/observedcalls.h"
#include "support/recordingview.h"
#include "support/tests.h"

inline QLabel *statusLabelOf(const qorvexgraph &window)
{
    return window.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
}

inline QString statusOf(const qorvexgraph &window)
{
    return statusLabelOf(window)->text();
}

/// The packets that the destructor of a window leaves behind, by design.
inline void freePackets(qorvexgraph &window)
{
    qDeleteAll(std::exchange(Inspect::packetQueue(window), {}));
}

/// A window, and the boards that are plugged in. It ends detached. Where a test has two, the boards are those
/// of the one that is built last.
class TestWindow : public qorvexgraph
{
public:
    explicit TestWindow(const QVector<int> &ids = {1})
        : library("complete", ids)
    {
    }
    ~TestWindow() override
    {
        detach();
        freePackets(*this);
    }

    /// As when the window is hidden, shown or not.
    void detach()
    {
        QHideEvent event;
        hideEvent(&event);
    }

    void type(const QString &line)
    {
        commandLine->setText(line);
        QTest::keyClick(commandLine, Qt::Key_Return);
    }

    /// Does one after the other: "attach", "show", "hide", "close"; anything else is typed.
    void perform(const QString &steps)
    {
        for (const QString &step : steps.split(' ', Qt::SkipEmptyParts)) {
            if (step == "attach")
                AttachHardware();
            else if (step == "show" || step == "hide" || step == "close")
                QMetaObject::invokeMethod(this, step.toLatin1().constData());
            else
                type(step);
        }
    }

    /// As the library notifies of boards that come and go.
    void notify(bool onOwnThread)
    {
        if (onOwnThread)
            pnp(this);
        else
            library->plug();
    }

    RecordingView *showRecordingView()
    {
        auto *view = new RecordingView(this);
        tabs->setCurrentIndex(tabs->addTab(view, "Recording"));
        return view;
    }

    using QObject::receivers;

    DriverLibrary library;
    QTabWidget *const tabs = findChild<QTabWidget *>();
    QLineUpDownEdit *const commandLine = findChild<QLineUpDownEdit *>();
    monitor *const monitorView = findChild<monitor *>();
};

/// An attached window. The call log is empty.
class AttachedWindow : public TestWindow
{
public:
    explicit AttachedWindow(const QVector<int> &ids = {1})
        : TestWindow(ids)
    {
        AttachHardware();
        library.takeCalls();
    }
};

/// Does something inside one call that the fake driver library receives.
class InsideCall
{
public:
    /// \param beginning of the call's text
    /// \param number 2 for the second call that begins like this
    InsideCall(const DriverLibrary &library, const QString &beginning, std::function<void()> action,
               int number = 1)
        : observed(library, [this, beginning, action = std::move(action), number](const QString &call) {
            if (call.startsWith(beginning) && ++count == number)
                action();
        })
    {
    }

    int callCount() const { return count; }

private:
    int count = 0;
    const ObservedCalls observed;
};

/// What a slot of the host's throws, and its notify() catches.
struct HostError
{
};

inline const QString debugMode = "orvexSetDriverDebugMode(1, 4, 4294967295)";
inline const QString commandA = "orvexSendCommand(1, \"A\\x0d\")";

/// The last of two is that of the binding's destruction.
inline QStringList callsOfADetach(const QVector<int> &ids = {1})
{
    QStringList calls;
    for (int id : ids) {
        calls += QString("orvexSetDriverDebugMode(%1, 1, 4294967295)").arg(id);
        calls += QString("orvexSendCommand(%1, \":MDU0\\x0d\")").arg(id);
        calls += QString("orvexSendCommand(%1, \":MDP0\\x0d\")").arg(id);
    }
    return calls + QStringList{"orvexDetach()", "orvexDetach()"};
}

/// The commands so far, and the debug modes that go before them.
inline QStringList takeCommands(const DriverLibrary &library)
{
    return library.takeCalls().filter(QRegularExpression("^orvex(SendCommand|SetDriverDebugMode)\\("));
}
