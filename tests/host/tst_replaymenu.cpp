#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTreeView>

#include "boardmenu.h"
#include "host/examplehost.h"
#include "replaybar.h"
#include "replaymenu.h"
#include "simulator/simulatedlibrary.h"
#include "support/accesstree.h"
#include "support/tests.h"
#include "tools/decoding/examplecapture.h"

/// The menu "Replay" and its bar, with a replay that is paused: reports at 0.1, 0.2 and 0.3 s, and a
/// notification at 0.5 s. Its time begins at the first of these.
class ReplayMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void isThereDuringAReplay();
    void isReadAloud();
    void namesKeys();
    void steps();
    void pauses();
    void changesTheRate();
    void restarts();
    void seeksByKey();
    void seeksWhenADragEnds();
    void showsTheEnd();
    void aShorterReplayIsNotSought();
    void leavesKeysToWhoeverUsesThem_data();
    void leavesKeysToWhoeverUsesThem();
    void leavesOtherKeysAlone();
    void takesKeysThatNobodyUses();

private:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
    }
    HostWindow &window() const { return *host_->window; }
    QAction &menuAction() const { return actionNamed(window().menuBar()->actions(), "&Replay"); }
    ReplayBar &bar() const { return *window().findChild<ReplayBar *>(); }
    QSlider &slider() const { return *bar().findChild<QSlider *>(); }
    QStringList texts() const;
    int state() const { return simulation_.replay()->state; }

    const ExampleFolder folder_;
    SimulatedLibrary library_;
    const Simulation simulation_ = *Simulation::find();
    std::unique_ptr<Recorder> recorder_;
    std::unique_ptr<ExampleHost> host_;
    BoardMenu *boards_ = nullptr;
    ReplayMenu *menu_ = nullptr;
};

void ReplayMenuTest::init()
{
    folder_.addFile("x.pcapng", examplecapture::whole());
    folder_.addFile("paused.json", R"({"title": "x", "replay": {"capture": "x.pcapng", "paused": true}})");
    QCOMPARE(simulation_.choose(folder_.path("paused.json")), QString());
    QCOMPARE(library_.orvexAttach(), 1);
    recorder_ = std::make_unique<Recorder>();
    library_.orvexSetCallback(1001, Recorder::data, recorder_.get());
    library_.orvexSetPnpCallback(Recorder::pnp, recorder_.get());
    host_ = std::make_unique<ExampleHost>();
    boards_ = new BoardMenu(window(), simulation_);
    menu_ = new ReplayMenu(window(), simulation_);
    connect(boards_, &BoardMenu::scenarioChanged, menu_, &ReplayMenu::update);
    window().show();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
}

void ReplayMenuTest::cleanup()
{
    host_.reset();
    library_.orvexDetach();
}

QStringList ReplayMenuTest::texts() const
{
    QStringList all;
    const QList<QLabel *> labels = bar().findChildren<QLabel *>();
    for (const QLabel *label : labels)
        all += label->text();
    return all;
}

void ReplayMenuTest::isThereDuringAReplay()
{
    QVERIFY(menuAction().isVisible());
    QVERIFY(bar().isVisible());
    QCOMPARE(simulation_.choose("no-boards"), QString());
    emit boards_->scenarioChanged();
    QVERIFY(!menuAction().isVisible());
    QVERIFY(!bar().isVisible());
    press(Qt::Key_Right);
    QCOMPARE(simulation_.choose(folder_.path("x.pcapng")), QString());
    emit boards_->scenarioChanged();
    QVERIFY(menuAction().isVisible());
    QVERIFY(bar().isVisible());
}

void ReplayMenuTest::isReadAloud()
{
    QCOMPARE(namelessIn(accessOf(&window())), QStringList());
    QStringList parts;
    for (const QAccessibleInterface *part : accessTree(accessOf(&bar())))
        parts += described(*part);
    QCOMPARE(parts, QStringList({"ToolBar: Replay", "CheckBox: More of the replay",
                                 "Slider: Position of the replay: 0",
                                 "StaticText: 0:00.000 / 0:00.400: : Time of the replay",
                                 "StaticText: 1x, paused: : Rate and state of the replay"}));
}

void ReplayMenuTest::namesKeys()
{
    QCOMPARE(
        captions(menuAction().menu()->actions()),
        (QStringList{"&Pause\tSpace", "&Step\tRight", "&Faster\tUp", "S&lower\tDown", "&Restart\tHome"}));
}

void ReplayMenuTest::steps()
{
    QCOMPARE(texts(), (QStringList{"0:00.000 / 0:00.400", "1x, paused"}));
    for (std::size_t count = 1; count <= 3; ++count) {
        press(Qt::Key_Right);
        QTRY_COMPARE(recorder_->count(), count);
    }
    QTRY_COMPARE(texts(), (QStringList{"0:00.200 / 0:00.400", "1x, paused"}));
    QCOMPARE(slider().maximum(), 400);
    QCOMPARE(slider().value(), 200);
}

void ReplayMenuTest::pauses()
{
    QAction *pause = menuAction().menu()->actions().constFirst();
    QVERIFY(pause->isChecked());
    press(Qt::Key_Space);
    QVERIFY(!pause->isChecked());
    QVERIFY(state() == ORVEXSIM_REPLAY_PLAYING || state() == ORVEXSIM_REPLAY_WAITING);
    press(Qt::Key_Space);
    QVERIFY(pause->isChecked());
    QCOMPARE(state(), int{ORVEXSIM_REPLAY_PAUSED});
}

void ReplayMenuTest::changesTheRate()
{
    press(Qt::Key_Up);
    QCOMPARE(simulation_.replay()->rate, 2.0);
    QCOMPARE(texts().constLast(), QString("2x, paused"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    QCOMPARE(simulation_.replay()->rate, 0.5);
    QCOMPARE(texts().constLast(), QString("0.5x, paused"));
    for (int key = 0; key < 20; ++key)
        press(Qt::Key_Up);
    QCOMPARE(simulation_.replay()->rate, 0.0);
    QCOMPARE(texts().constLast(), QString("max, paused"));
}

void ReplayMenuTest::restarts()
{
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    QTRY_COMPARE(simulation_.replay()->position, 100'000'000);
    press(Qt::Key_Home);
    QCOMPARE(simulation_.replay()->position, 0);
    QCOMPARE(texts().constFirst(), QString("0:00.000 / 0:00.400"));
    QCOMPARE(slider().value(), 0);
}

/// The slider's other keys are those of any slider.
void ReplayMenuTest::seeksByKey()
{
    slider().setFocus();
    press(Qt::Key_PageUp); // a twentieth
    QCOMPARE(simulation_.replay()->position, 20'000'000);
    press(Qt::Key_Left); // a tenth of that
    QCOMPARE(simulation_.replay()->position, 18'000'000);
    press(Qt::Key_End);
    QCOMPARE(simulation_.replay()->position, 400'000'000);
    QCOMPARE(recorder_->count(), std::size_t{0});
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    QTRY_COMPARE(recorder_->count(), std::size_t{1});
}

void ReplayMenuTest::seeksWhenADragEnds()
{
    slider().setSliderDown(true);
    slider().setSliderPosition(150);
    QCOMPARE(texts().constFirst(), QString("0:00.150 / 0:00.400"));
    menu_->update();
    QCOMPARE(texts().constFirst(), QString("0:00.150 / 0:00.400"));
    QCOMPARE(simulation_.replay()->position, 0);
    slider().setSliderDown(false);
    QCOMPARE(simulation_.replay()->position, 150'000'000);
    press(Qt::Key_Right);
    QTRY_COMPARE(recorder_->count(), std::size_t{1});
    QCOMPARE(recorder_->deliveries().front().bytes.front(), static_cast<unsigned char>(3)); // the last one
}

void ReplayMenuTest::showsTheEnd()
{
    press(Qt::Key_Space);
    QTRY_COMPARE(texts(), (QStringList{"0:00.400 / 0:00.400", "1x, ended"}));
    QCOMPARE(recorder_->count(), std::size_t{3});
    press(Qt::Key_Space);
    QCOMPARE(state(), int{ORVEXSIM_REPLAY_ENDED});
    press(Qt::Key_Home);
    QTRY_COMPARE(recorder_->count(), std::size_t{6});
}

/// Its slider has a lower maximum than the one before.
void ReplayMenuTest::aShorterReplayIsNotSought()
{
    simulation_.seekReplay(400'000'000);
    menu_->update();
    QCOMPARE(slider().value(), 400);
    folder_.addFile("short.json",
                    R"({"title": "x", "replay": {"capture": "x.pcapng", "to": 0.25, "paused": true}})");
    QCOMPARE(simulation_.choose(folder_.path("short.json")), QString());
    emit boards_->scenarioChanged();
    QCOMPARE(slider().maximum(), 100);
    QCOMPARE(slider().value(), 0);
    QCOMPARE(simulation_.replay()->position, 0);
}

void ReplayMenuTest::leavesKeysToWhoeverUsesThem_data()
{
    addColumns<QString, Qt::Key>("widget", "key");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Right, Qt::Key_Home})
        addRow(qPrintable("QLineEdit " + QKeySequence(key).toString()), "QLineEdit", key);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home})
        addRow(qPrintable("QSlider " + QKeySequence(key).toString()), "QSlider", key);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home})
        addRow(qPrintable("QSpinBox " + QKeySequence(key).toString()), "QSpinBox", key);
    addRow("QCheckBox Space", "QCheckBox", Qt::Key_Space);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Up, Qt::Key_Down, Qt::Key_Right, Qt::Key_Home})
        addRow(qPrintable("QTreeView " + QKeySequence(key).toString()), "QTreeView", key);
}

void ReplayMenuTest::leavesKeysToWhoeverUsesThem()
{
    QFETCH(QString, widget);
    QFETCH(Qt::Key, key);
    const std::map<QString, QWidget *> widgets{{"QLineEdit", new QLineEdit("a text")},
                                               {"QSlider", new QSlider},
                                               {"QSpinBox", new QSpinBox},
                                               {"QCheckBox", new QCheckBox},
                                               {"QTreeView", new QTreeView}};
    auto *area = window().findChild<QStackedWidget *>();
    for (const auto &[name, part] : widgets)
        area->addWidget(part);
    QWidget *focused = widgets.at(widget);
    area->setCurrentWidget(focused);
    focused->setFocus();
    QCOMPARE(QApplication::focusWidget(), focused);
    QStandardItemModel model(3, 1);
    qobject_cast<QTreeView *>(widgets.at("QTreeView"))->setModel(&model);
    qobject_cast<QSlider *>(widgets.at("QSlider"))->setValue(50);
    press(key);
    const OrvexsimReplay replay = *simulation_.replay();
    QCOMPARE(replay.state, int{ORVEXSIM_REPLAY_PAUSED});
    QCOMPARE(replay.rate, 1.0);
    QCOMPARE(replay.sent, 0ULL);
}

void ReplayMenuTest::leavesOtherKeysAlone()
{
    press(Qt::Key_Right, Qt::ControlModifier);
    press(Qt::Key_Up, Qt::ShiftModifier);
    press(Qt::Key_Left);
    QCOMPARE(simulation_.replay()->rate, 1.0);
    QCOMPARE(simulation_.replay()->sent, 0ULL);
}

void ReplayMenuTest::takesKeysThatNobodyUses()
{
    window().findChild<QStackedWidget *>()->addWidget(new QLabel("a tool"));
    press(Qt::Key_Up, Qt::KeypadModifier);
    QCOMPARE(simulation_.replay()->rate, 2.0);
}

PADSCOPE_TESTS(ReplayMenuTest);
#include "tst_replaymenu.moc"
