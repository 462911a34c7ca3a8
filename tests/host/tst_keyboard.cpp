#include <QLabel>
#include <QLineEdit>
#include <QPluginLoader>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTreeView>

#include "hostwindow.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"
#include "support/waitingpackets.h"
#include "toolparts.h"

/// The real tool in the host with the simulator, by keyboard alone. Keys go to the window as the platform
/// would send them, and from there to whatever has the focus.
class KeyboardTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void typesACommandAtOnce();
    void typesACommandIntoARestoredTool();
    void replacesTheLastCommandAfterReopening();
    void typesAfterReopeningFromAnotherControl();
    void readsTheAnswer();

private:
    void open();
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window_->windowHandle(), key, modifiers);
    }
    void type(const char *text)
    {
        for (const char *character = text; *character; ++character)
            QTest::keyClick(window_->windowHandle(), *character);
    }
    bool isSent(const char *call) const
    {
        const auto calls = simulator_->callsFrom(0);
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }

    std::unique_ptr<SimulatedLibrary> simulator_;
    PluginScan scan_;
    std::unique_ptr<HostWindow> window_;
    QWidget *tool_ = nullptr;
};

void KeyboardTest::init()
{
    simulator_ = std::make_unique<SimulatedLibrary>();
    scan_ = scanPlugins({QStringLiteral(PADSCOPE_PLUGIN_FOLDER)});
    QCOMPARE(scan_.plugins.size(), std::size_t(1));
    window_ = std::make_unique<HostWindow>(scan_.plugins);
}

void KeyboardTest::cleanup()
{
    window_.reset();
    scan_ = {};
    simulator_.reset();
}

void KeyboardTest::open()
{
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    press(Qt::Key_1, Qt::ControlModifier);
    QVERIFY(window_->openPlugin());
    tool_ = window_->openTool(*window_->openPlugin());
}

void KeyboardTest::typesACommandAtOnce()
{
    open();
    type("?");
    QCOMPARE(lineEditOf(*tool_)->text(), QString("?"));
    press(Qt::Key_Return);
    QTRY_VERIFY(isSent("orvexSendCommand(1001, \"?\\r\")"));
    const auto *status = tool_->findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    QTRY_COMPARE(status->text(), QStringLiteral("<b>1 device found.</b>"));
}

void KeyboardTest::typesACommandIntoARestoredTool()
{
    // as the host does at its start when the tool was open at the end
    tool_ = window_->openTool(scan_.plugins[0]);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    type("?");
    QCOMPARE(lineEditOf(*tool_)->text(), QString("?"));
}

void KeyboardTest::replacesTheLastCommandAfterReopening()
{
    open();
    type("first");
    press(Qt::Key_Return);
    press(Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!window_->openPlugin());
    press(Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(lineEditOf(*tool_)->selectedText(), QString("first"));
    type("?");
    QCOMPARE(lineEditOf(*tool_)->text(), QString("?"));
}

void KeyboardTest::typesAfterReopeningFromAnotherControl()
{
    open();
    press(Qt::Key_Tab);
    QVERIFY(QApplication::focusWidget() != lineEditOf(*tool_));
    press(Qt::Key_W, Qt::ControlModifier);
    press(Qt::Key_1, Qt::ControlModifier);
    type("?");
    QCOMPARE(lineEditOf(*tool_)->text(), QString("?"));
}

void KeyboardTest::readsTheAnswer()
{
    open();
    press(Qt::Key_Tab, Qt::ShiftModifier);
    press(Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(tabsOf(*tool_)->currentIndex(), 1);
    for (int tab = 0; tab < 20 && QApplication::focusWidget() != lineEditOf(*tool_); ++tab)
        press(Qt::Key_Tab);
    type("V");
    press(Qt::Key_Return);
    const auto answered = [this] {
        return !itemRows(*tool_).filter(QStringLiteral("voltage reports on!")).isEmpty();
    };
    QTRY_VERIFY(answered());
}

PADSCOPE_TESTS(KeyboardTest);
#include "tst_keyboard.moc"
