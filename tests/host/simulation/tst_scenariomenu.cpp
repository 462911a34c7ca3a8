#include <QActionGroup>
#include <QFileDialog>
#include <QMessageBox>
#include <QSignalSpy>
#include <sys/mman.h>
#include <unistd.h>

#include "host/examplehost.h"
#include "scenariomenu.h"
#include "simulator/simulatedlibrary.h"
#include "support/tests.h"

/// The menu of scenarios, with the simulator as it is built.
class ScenarioMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void marksTheScenario();
    void opensAFileOfTheUsersOwn();
    void opensDialogWhereTheLastFileWas();
    void reloads();
    void namesAFileInMemory();
    void showsWhyAScenarioIsRejected();

private:
    /// Writes a scenario with this board alone.
    void writeScenario(int board) const;
    QString ownFile() const { return folder_.filePath("own & only.json"); }
    QAction *action(const char *caption) const { return &actionNamed(menu_->actions(), caption); }

    const QTemporaryDir folder_;
    const SimulatedLibrary library_;
    const Simulation simulation_ = *Simulation::find();
    std::unique_ptr<QWidget> window_;
    ScenarioMenu *menu_ = nullptr;
};

void ScenarioMenuTest::init()
{
    QCOMPARE(simulation_.choose("default"), QString());
    window_ = std::make_unique<QWidget>();
    menu_ = new ScenarioMenu(simulation_, window_.get());
}

void ScenarioMenuTest::cleanup()
{
    window_.reset();
}

void ScenarioMenuTest::writeScenario(int board) const
{
    QFile file(ownFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral(R"({"title": "Own", "boards": [{"id": %1}]})").arg(board).toUtf8());
}

void ScenarioMenuTest::marksTheScenario()
{
    QAction *flood = action("flood: 10,000 reports a second from eight boards");
    QAction *one = action("default: One board on which a pen writes");
    QVERIFY(flood->actionGroup() && flood->actionGroup()->isExclusive());
    QCOMPARE(flood->actionGroup(), one->actionGroup());
    QVERIFY(one->isChecked() && !flood->isChecked());
    QCOMPARE(menu_->title(), QString("&Scenario: default"));

    QSignalSpy told(menu_, &ScenarioMenu::told);
    flood->trigger();
    QCOMPARE(simulation_.currentScenario(), QString("flood"));
    QVERIFY(flood->isChecked() && !one->isChecked());
    QCOMPARE(menu_->title(), QString("&Scenario: flood"));
    QCOMPARE(told.value(0).value(0).toString(), QString("Scenario: flood"));
}

void ScenarioMenuTest::opensAFileOfTheUsersOwn()
{
    writeScenario(7);
    QSignalSpy told(menu_, &ScenarioMenu::told);
    action("&Open...")->trigger();
    auto *dialog = window_->findChild<QFileDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    dialog->selectFile(ownFile());
    static_cast<QDialog *>(dialog)->accept();
    QCOMPARE(simulation_.boards(), std::vector<int>({7}));
    QCOMPARE(menu_->title(), QString("&Scenario: own && only.json"));
    QCOMPARE(told.value(0).value(0).toString(), "Scenario: " + ownFile());
    QAction *own = action("own && only.json");
    QVERIFY(own->isChecked() && own->isVisible());
    QCOMPARE(own->statusTip(), ownFile());
    // back and forth
    action("no-boards: No board at all")->trigger();
    QVERIFY(!own->isChecked());
    own->trigger();
    QCOMPARE(simulation_.boards(), std::vector<int>({7}));
}

void ScenarioMenuTest::opensDialogWhereTheLastFileWas()
{
    const auto folder = [this] {
        action("&Open...")->trigger();
        auto *dialog = window_->findChild<QFileDialog *>();
        const QString path = dialog ? dialog->directory().absolutePath() : QString();
        delete dialog;
        return path;
    };
    QCOMPARE(folder(), QDir::homePath());
    writeScenario(7);
    QCOMPARE(simulation_.choose(ownFile()), QString());
    action("&Reload")->trigger();
    QCOMPARE(folder(), folder_.path());
}

void ScenarioMenuTest::reloads()
{
    writeScenario(7);
    QCOMPARE(simulation_.choose(ownFile()), QString());
    writeScenario(8);
    action("&Reload")->trigger();
    QCOMPARE(simulation_.boards(), std::vector<int>({8}));
}

/// As `padscope replay` hands one over.
void ScenarioMenuTest::namesAFileInMemory()
{
    const int file = memfd_create("field & desk.pcapng", MFD_CLOEXEC);
    const QByteArray scenario = R"({"title": "x", "boards": [{"id": 7}]})";
    QCOMPARE(write(file, scenario.constData(), std::size_t(scenario.size())), ssize_t(scenario.size()));
    QCOMPARE(simulation_.choose(QString("/proc/%1/fd/%2").arg(getpid()).arg(file)), QString());
    action("&Reload")->trigger();
    QCOMPARE(menu_->title(), QString("&Scenario: field && desk.pcapng"));
    QVERIFY(action("field && desk.pcapng")->isChecked());
    QCOMPARE(simulation_.boards(), std::vector<int>({7}));
    close(file);
}

void ScenarioMenuTest::showsWhyAScenarioIsRejected()
{
    writeScenario(7);
    QCOMPARE(simulation_.choose(ownFile()), QString());
    QVERIFY(QFile::remove(ownFile()));
    QSignalSpy told(menu_, &ScenarioMenu::told);
    action("&Reload")->trigger();
    auto *box = window_->findChild<QMessageBox *>();
    QVERIFY(box && box->isVisible());
    QCOMPARE(box->text(),
             ownFile() + ": this cannot be read (No such file or directory); a scenario file is needed");
    QCOMPARE(told.count(), 0);
    QCOMPARE(simulation_.boards(), std::vector<int>({7}));
}

PADSCOPE_TESTS(ScenarioMenuTest);
#include "tst_scenariomenu.moc"
