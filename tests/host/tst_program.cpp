#include "tests/host/examplefolder.h"
#include "tests/host/hostrun.h"
#include "tests/support/testmain.h"

#include <QElapsedTimer>

namespace {

// What lrelease makes of one message: context "Example", "Version 1.0" is "Fassung 1.0".
const char germanTranslation[] =
    "3cb86418caef9c95cd211cbf60a1bddda70000000264654200000008001cfbb000000000690000003d030000"
    "001600460061007300730075006e006700200031002e00300800000000060000000b56657273696f6e20312e"
    "3007000000074578616d706c650188000000020101";

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void lists();
    void listsAfterRefusal();
    void listsWithoutDisplay();
    void needsAPlugin();
    void refusesBadInput_data();
    void refusesBadInput();
    void refusesWithoutDisplay_data();
    void refusesWithoutDisplay();
    void refusesADisplayThatIsNotThere_data();
    void refusesADisplayThatIsNotThere();
    void refusesOptionsBeforeTheDisplay();
    void leavesTheToolkitItsOptions();
    void showsHelpAndVersion();
    void tellsThatOutputIsFull_data();
    void tellsThatOutputIsFull();
    void runsTheScriptInOrder();
    void opensTheFirstToolByDefault();
    void waitsForTheRestOfTheTime();
    void closesOnlyAfterTheTime();
    void takesSnapshots();
    void followsScaling();
    void listsScenarios();
    void refusesBadScenario_data();
    void refusesBadScenario();
    void prefersTheScenarioOfTheOption();
    void findsDriver();
    void translates();

private:
    QStringList withFolder(const QStringList &arguments) const;

    std::unique_ptr<ExampleFolder> folder_;
};

void ProgramTest::init()
{
    folder_ = std::make_unique<ExampleFolder>();
    QVERIFY(folder_->addLibrary(QStringLiteral("example_tenth")));
    QVERIFY(folder_->addLibrary(QStringLiteral("example_second")));
}

void ProgramTest::cleanup()
{
    folder_.reset();
}

QStringList ProgramTest::withFolder(const QStringList &arguments) const
{
    return QStringList{QStringLiteral("--plugins"), folder_->path()} + arguments;
}

void ProgramTest::lists()
{
    const Run host = run(withFolder({QStringLiteral("--list")}));
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.output, QStringLiteral("Second\t2/basic/second\tVersion 1.0\t%1/example_second.so\n"
                                         "Tenth\t10/advanced/tenth\tVersion 1.0\t%1/example_tenth.so\n")
                              .arg(folder_->path()));
    QCOMPARE(host.status, 0);
}

void ProgramTest::listsAfterRefusal()
{
    QVERIFY(folder_->addFile(QStringLiteral("a.so"), "a text\n"));
    QVERIFY(folder_->addLibrary(QStringLiteral("foreign_plugin")));
    const Run host = run(withFolder({QStringLiteral("--list")}));
    QCOMPARE(host.errors,
             QStringList({QStringLiteral("tendro-host: %1/a.so: not a library").arg(folder_->path()),
                          QStringLiteral("tendro-host: %1/foreign_plugin.so: wrong interface, not "
                                         "com.corvane.tendro.plugin/1.1")
                              .arg(folder_->path())}));
    QCOMPARE(host.output.count(QLatin1Char('\n')), 2);
    QCOMPARE(host.status, 0);
}

void ProgramTest::listsWithoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
        environment.remove(QLatin1String(name));
    const Run host = run(withFolder({QStringLiteral("--list")}), environment);
    QCOMPARE(host.output.count(QLatin1Char('\n')), 2);
    QCOMPARE(host.status, 0);
}

void ProgramTest::needsAPlugin()
{
    const QTemporaryDir empty;
    const QTemporaryDir alsoEmpty;
    const Run host =
        run({QStringLiteral("--plugins"), empty.path(), QStringLiteral("--plugins"), alsoEmpty.path()});
    QCOMPARE(
        host.errors,
        QStringList(QStringLiteral("tendro-host: no plugin in %1, %2").arg(empty.path(), alsoEmpty.path())));
    QCOMPARE(host.status, 2);
}

void ProgramTest::refusesBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");

    const auto row = [](const char *name, std::initializer_list<const char *> arguments, const char *error) {
        QStringList list;
        for (const char *argument : arguments)
            list += QString::fromLatin1(argument);
        QTest::newRow(name) << list << QString::fromLatin1(error);
    };
    row("unknown option", {"--bogus"}, "Unknown option 'bogus'.");
    row("two lines in an argument", {"one\ntwo"}, "Unexpected argument 'one two'.");
    row("unknown tool", {"--open", "Third"}, "--open Third: no such tool; there is \"Second\", \"Tenth\"");
    row("unknown tab", {"--tab", "Third"}, "--tab Third: no such tab; there is \"First Tab\", \"Second\"");
    row("bad time", {"--for", "x"}, "--for x: expected seconds from 0 to 86400");
    row("driver that is no library", {"--driver", "/proc/self/status"},
        "/proc/self/status: invalid ELF header");
    row("translation that is none", {"--translation", "/proc/self/status"},
        "/proc/self/status: not a translation");
    row("snapshot into a file", {"--for", "0", "--snapshot", "/proc/self/status"},
        "/proc/self/status: no folder that snapshots can be written to");
}

void ProgramTest::refusesBadInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const Run host = run(withFolder(arguments));
    QCOMPARE(host.errors, QStringList(QStringLiteral("tendro-host: ") + error));
    QCOMPARE(host.output, QString());
    QCOMPARE(host.status, 2);
}

void ProgramTest::refusesWithoutDisplay_data()
{
    QTest::addColumn<bool>("isSet");
    QTest::newRow("no variables") << false;
    QTest::newRow("empty variables") << true;
}

void ProgramTest::refusesWithoutDisplay()
{
    QFETCH(bool, isSet);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        environment.remove(QLatin1String(name));
        if (isSet)
            environment.insert(QLatin1String(name), QStringLiteral(""));
    }
    const Run host = run(withFolder({}), environment);
    QCOMPARE(host.errors, QStringList(QStringLiteral(
                              "tendro-host: no display; QT_QPA_PLATFORM=offscreen runs without one")));
    QCOMPARE(host.status, 2);
}

void ProgramTest::refusesADisplayThatIsNotThere_data()
{
    QTest::addColumn<QString>("platform");
    QTest::addColumn<QString>("line");
    QTest::newRow("no server") << "xcb"
                               << "tendro-host: platform xcb: cannot be opened";
    QTest::newRow("no server, by default") << QString() << "tendro-host: display :54321: cannot be opened";
    QTest::newRow("no such platform") << "none-such"
                                      << "tendro-host: platform none-such: cannot be opened";
}

void ProgramTest::refusesADisplayThatIsNotThere()
{
    QFETCH(QString, platform);
    QFETCH(QString, line);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":54321"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    if (!platform.isNull())
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
    const Run host = run(withFolder({}), environment);
    QCOMPARE(host.errors, QStringList(line + "; QT_QPA_PLATFORM=offscreen runs without one"));
    QCOMPARE(host.status, 2);
}

void ProgramTest::refusesOptionsBeforeTheDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // no platform has this name, so that the widgets' application object would abort
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none-such"));
    const Run host = run({QStringLiteral("--bogus")}, environment);
    QCOMPARE(host.errors, QStringList(QStringLiteral("tendro-host: Unknown option 'bogus'.")));
    QCOMPARE(host.status, 2);
}

void ProgramTest::leavesTheToolkitItsOptions()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    const Run host =
        run(withFolder({QStringLiteral("-platform"), QStringLiteral("offscreen"), QStringLiteral("-reverse"),
                        QStringLiteral("-style=fusion"), QStringLiteral("--for"), QStringLiteral("0")}),
            environment);
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.status, 0);
}

void ProgramTest::showsHelpAndVersion()
{
    const Run help = run({QStringLiteral("--help")});
    QCOMPARE(help.status, 0);
    for (const char *name :
         {"--plugins", "--list", "--open", "--driver", "--type", "--tab", "--for", "--rows", "--snapshot",
          "--simulate", "--list-scenarios", "--translation", "--help", "--version"})
        QVERIFY2(help.output.contains(QLatin1String(name)), name);
    const Run version = run({QStringLiteral("--version")});
    QCOMPARE(version.output, QStringLiteral("tendro-host 1.0\n"));
    QCOMPARE(version.status, 0);
}

void ProgramTest::tellsThatOutputIsFull_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *name : {"--list", "--list-scenarios", "--help", "--version"})
        QTest::newRow(name) << QStringList(QLatin1String(name));
    QTest::newRow("--rows") << QStringList(
        {QStringLiteral("--rows"), QStringLiteral("--for"), QStringLiteral("0")});
}

void ProgramTest::tellsThatOutputIsFull()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(TENDRO_HOST), withFolder(arguments));
    QVERIFY(process.waitForFinished());
    QCOMPARE(
        hostLines(process.readAllStandardError()),
        QStringList(QStringLiteral("tendro-host: standard output: not all of it can be written; expected "
                                   "a place with room")));
    QCOMPARE(process.exitCode(), 2);
}

void ProgramTest::runsTheScriptInOrder()
{
    const Run host =
        run(withFolder({QStringLiteral("--rows"), QStringLiteral("--tab"), QStringLiteral("Second=0.1"),
                        QStringLiteral("--tab"), QStringLiteral("First Tab=0"), QStringLiteral("--type"),
                        QStringLiteral(":Go 1"), QStringLiteral("--type"), QStringLiteral("x"),
                        QStringLiteral("--open"), QStringLiteral("Tenth")}));
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.output, QStringLiteral("one\t1\ntwo lines\t2\n"));
    QCOMPARE(host.status, 0);
    QCOMPARE(folder_->events(),
             QStringList({QStringLiteral("widget()"), QStringLiteral("typed :Go 1"),
                          QStringLiteral("driver missing"), QStringLiteral("typed x"),
                          QStringLiteral("driver missing"), QStringLiteral("tab 1"), QStringLiteral("tab 0"),
                          QStringLiteral("closeWidget"), QStringLiteral("widget closed"),
                          QStringLiteral("driver missing"), QStringLiteral("widget destroyed"),
                          QStringLiteral("plugin destroyed"), QStringLiteral("plugin destroyed")}));
}

void ProgramTest::opensTheFirstToolByDefault()
{
    QVERIFY(folder_->addLibrary(QStringLiteral("example_windowless")));
    QVERIFY(QFile::remove(folder_->filePath(QStringLiteral("example_second.so"))));
    const Run host =
        run(withFolder({QStringLiteral("--rows"), QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.errors, QStringList({QStringLiteral("tendro-host: %1: its widget() gives no window")
                                           .arg(folder_->filePath(QStringLiteral("example_windowless.so"))),
                                       QStringLiteral("tendro-host: Windowless can't be opened")}));
    QCOMPARE(host.status, 2);
}

void ProgramTest::waitsForTheRestOfTheTime()
{
    QElapsedTimer clock;
    clock.start();
    const Run host = run(withFolder({QStringLiteral("--tab"), QStringLiteral("Second=0.3"),
                                     QStringLiteral("--for"), QStringLiteral("0.8")}));
    QCOMPARE(host.status, 0);
    // the time is the subject: at least 0.8 s from the start of the script
    QVERIFY2(clock.elapsed() >= 800, qPrintable(QString::number(clock.elapsed())));
}

void ProgramTest::closesOnlyAfterTheTime()
{
    const Run host = run(withFolder({QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.status, 0);
    // no tool was asked for
    QCOMPARE(folder_->events(),
             QStringList({QStringLiteral("plugin destroyed"), QStringLiteral("plugin destroyed")}));
}

void ProgramTest::takesSnapshots()
{
    const QString pictures = folder_->filePath(QStringLiteral("pictures"));
    const Run host =
        run(withFolder({QStringLiteral("--open"), QStringLiteral("Second"), QStringLiteral("--for"),
                        QStringLiteral("0.1"), QStringLiteral("--snapshot"), pictures}));
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.status, 0);
    QCOMPARE(QDir(pictures).entryList(QDir::Files),
             QStringList({QStringLiteral("first-tab.png"), QStringLiteral("second.png")}));
    const QImage first(pictures + QStringLiteral("/first-tab.png"));
    const QImage second(pictures + QStringLiteral("/second.png"));
    QVERIFY(first.width() >= 950);
    QCOMPARE(first.size(), second.size());
    QVERIFY(first != second);
}

void ProgramTest::followsScaling()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto widthAt = [&](const char *factor) {
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QLatin1String(factor));
        const QString pictures = folder_->filePath(QLatin1String(factor));
        run(withFolder(
                {QStringLiteral("--for"), QStringLiteral("0"), QStringLiteral("--snapshot"), pictures}),
            environment);
        return QImage(pictures + QStringLiteral("/second.png")).width();
    };
    const int width = widthAt("1");
    QVERIFY(width >= 950);
    QCOMPARE(widthAt("2"), 2 * width);
}

void ProgramTest::listsScenarios()
{
    const Run host = run({QStringLiteral("--list-scenarios")});
    QCOMPARE(host.status, 0);
    const QStringList lines = host.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVERIFY(lines.contains(QStringLiteral("default\tOne board on which a pen writes")));
    QVERIFY(lines.contains(QStringLiteral("no-boards\tNo board at all")));
}

void ProgramTest::refusesBadScenario_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("place");
    QTest::newRow("no such file") << QByteArray() << "scenario.json";
    QTest::newRow("not JSON") << QByteArray("{\n  \"title\":\n") << "scenario.json";
    QTest::newRow("unknown key") << QByteArray("{\"title\": \"x\", \"bords\": []}\n") << "bords";
}

void ProgramTest::refusesBadScenario()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, place);
    if (!content.isEmpty())
        QVERIFY(folder_->addFile(QStringLiteral("scenario.json"), content));
    const Run host = run(withFolder(
        {QStringLiteral("--simulate"), folder_->filePath(QStringLiteral("scenario.json")),
         QStringLiteral("--open"), QStringLiteral("Second"), QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.status, 2);
    QCOMPARE(host.errors.size(), 1);
    QVERIFY2(host.errors[0].contains(QStringLiteral("scenario.json")) && host.errors[0].contains(place),
             qPrintable(host.errors[0]));
    // not even a tool was loaded
    QCOMPARE(folder_->events(), QStringList());
}

void ProgramTest::prefersTheScenarioOfTheOption()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ORVEXSIM_SCENARIO"), QStringLiteral("none-such"));
    process.setProcessEnvironment(environment);
    const auto complaints = [&](const QStringList &arguments) {
        process.start(QStringLiteral(TENDRO_HOST),
                      withFolder(arguments + QStringList{QStringLiteral("--for"), QStringLiteral("0")}));
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardError())
            .split(QLatin1Char('\n'))
            .filter(QStringLiteral("none-such"));
    };
    QCOMPARE(complaints({QStringLiteral("--simulate")}).size(), 1);
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(complaints({QStringLiteral("--simulate"), QStringLiteral("default")}), QStringList());
    QCOMPARE(process.exitCode(), 0);
}

void ProgramTest::findsDriver()
{
    const Run host = run(withFolder(
        {QStringLiteral("--driver"), QStringLiteral(EXAMPLE_LIBRARIES "/libexample_driver.so"),
         QStringLiteral("--type"), QStringLiteral("x"), QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.status, 0);
    QCOMPARE(
        folder_->events().mid(0, 5),
        QStringList({QStringLiteral("widget()"), QStringLiteral("typed x"), QStringLiteral("driver found"),
                     QStringLiteral("closeWidget"), QStringLiteral("widget closed")}));
    QCOMPARE(folder_->events().value(5), QStringLiteral("driver found"));
}

void ProgramTest::translates()
{
    QVERIFY(folder_->addFile(QStringLiteral("german.qm"), QByteArray::fromHex(germanTranslation)));
    const Run host = run(withFolder({QStringLiteral("--list"), QStringLiteral("--translation"),
                                     folder_->filePath(QStringLiteral("german.qm"))}));
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.output.count(QStringLiteral("\tFassung 1.0\t")), 2);
}

PADSCOPE_TEST_MAIN(ProgramTest)
#include "tst_program.moc"
