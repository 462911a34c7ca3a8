#include "host/examplefolder.h"
#include "host/hostrun.h"
#include "support/tests.h"

/// What the host refuses, with a line on standard error and status 2.
class RefusalTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void needsAPlugin();
    void refusesBadInput_data();
    void refusesBadInput();
    void refusesToolkitOptionsWithoutValue_data();
    void refusesToolkitOptionsWithoutValue();
    void refusesOptionsBeforeTheDisplay();
    void tellsThatOutputIsFull_data();
    void tellsThatOutputIsFull();
    void tellsThatThereAreNoScenarios();
    void refusesBadScenario_data();
    void refusesBadScenario();

private:
    std::unique_ptr<ToolFolder> folder_;
};

void RefusalTest::init()
{
    folder_ = std::make_unique<ToolFolder>();
}

void RefusalTest::cleanup()
{
    folder_.reset();
}

void RefusalTest::needsAPlugin()
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

void RefusalTest::refusesBadInput_data()
{
    addColumns<QStringList, QString>("arguments", "error");

    const auto row = [](const char *name, std::initializer_list<const char *> arguments, const char *error) {
        QStringList list;
        for (const char *argument : arguments)
            list += QString::fromLatin1(argument);
        addRow(name, list, QString::fromLatin1(error));
    };
    row("unknown option", {"--bogus"}, "Unknown option 'bogus'.");
    row("two lines in an argument", {"one\ntwo"}, "Unexpected argument 'one two'.");
    row("unknown tool", {"--open", "Third"}, "--open Third: no such tool; there is \"Second\", \"Tenth\"");
    row("unknown tab", {"--tab", "Third"}, "--tab Third: no such tab; there is \"First Tab\", \"Second\"");
    row("bad time", {"--for", "x"}, "--for x: expected seconds from 0 to 86400");
    row("driver that is no library", {"--driver", "/proc/self/status"}, "/proc/self/status: not a library");
    row("another library as the driver", {"--driver", EXAMPLE_LIBRARIES "/libplain_library.so"},
        EXAMPLE_LIBRARIES "/libplain_library.so: not the driver library; expected one with the soname "
                          "liborvexboardex.so.1");
    row("a program as the driver", {"--driver", TENDRO_HOST},
        TENDRO_HOST ": cannot dynamically load position-independent executable");
    row("translation that is none", {"--translation", "/proc/self/status"},
        "/proc/self/status: not a translation");
    row("snapshot into a file", {"--for", "0", "--snapshot", "/proc/self/status"},
        "--snapshot /proc/self/status: Not a directory");
}

void RefusalTest::refusesBadInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    const Run host = run(folder_->with(arguments));
    QCOMPARE(host.errors, QStringList(QStringLiteral("tendro-host: ") + error));
    QCOMPARE(host.output, QString());
    QCOMPARE(host.status, 2);
}

void RefusalTest::refusesToolkitOptionsWithoutValue_data()
{
    QTest::addColumn<QString>("option");
    for (const char *option : {"-platform", "--platform", "-style", "-qwindowtitle"})
        addRow(option, option);
}

void RefusalTest::refusesToolkitOptionsWithoutValue()
{
    QFETCH(QString, option);
    QProcess process;
    process.start(QStringLiteral(TENDRO_HOST),
                  folder_->with({QStringLiteral("--for"), QStringLiteral("0"), option}));
    QVERIFY(process.waitForFinished());
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
             QStringLiteral("tendro-host: Missing value after '%1'.\n").arg(option));
    QCOMPARE(process.exitCode(), 2);
}

void RefusalTest::refusesOptionsBeforeTheDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // no platform has this name, so that the widgets' application object would abort
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none-such"));
    const Run host = run({QStringLiteral("--bogus")}, environment);
    QCOMPARE(host.errors, QStringList(QStringLiteral("tendro-host: Unknown option 'bogus'.")));
    QCOMPARE(host.status, 2);
}

void RefusalTest::tellsThatOutputIsFull_data()
{
    QTest::addColumn<QStringList>("arguments");
    for (const char *name : {"--list", "--list-scenarios", "--help", "--version"})
        addRow(name, QStringList(QLatin1String(name)));
    addRow("--rows", QStringList({QStringLiteral("--rows"), QStringLiteral("--for"), QStringLiteral("0")}));
}

void RefusalTest::tellsThatOutputIsFull()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(TENDRO_HOST), folder_->with(arguments));
    QVERIFY(process.waitForFinished());
    QCOMPARE(
        hostLines(process.readAllStandardError()),
        QStringList(QStringLiteral("tendro-host: standard output: not all of it can be written; expected "
                                   "a place with room")));
    QCOMPARE(process.exitCode(), 2);
}

void RefusalTest::tellsThatThereAreNoScenarios()
{
    // the host looks for the simulator in the folder beside its own
    const QDir root(folder_->path());
    QVERIFY(root.mkdir(QStringLiteral("host")) && root.mkdir(QStringLiteral("simulator")));
    const QString host = root.filePath(QStringLiteral("host/tendro-host"));
    const QString library = root.filePath(QStringLiteral("simulator/liborvexboardex.so.1"));
    QVERIFY(QFile::copy(QStringLiteral(TENDRO_HOST), host));
    QVERIFY(QFile::copy(QStringLiteral(SIMULATOR_FILE), library));
    QProcess process;
    process.start(host, {QStringLiteral("--list-scenarios")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(
        hostLines(process.readAllStandardError()),
        QStringList(QStringLiteral("tendro-host: --list-scenarios: no scenario in a folder \"scenarios\" "
                                   "beside ") +
                    library));
    QCOMPARE(process.exitCode(), 2);
}

void RefusalTest::refusesBadScenario_data()
{
    addColumns<QByteArray, QString>("content", "place");
    addRow("no such file", QByteArray(), "scenario.json");
    addRow("not JSON", QByteArray("{\n  \"title\":\n"), "scenario.json");
    addRow("unknown key", QByteArray("{\"title\": \"x\", \"bords\": []}\n"), "bords");
}

void RefusalTest::refusesBadScenario()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, place);
    if (!content.isEmpty())
        QVERIFY(folder_->addFile(QStringLiteral("scenario.json"), content));
    const Run host = run(folder_->with(
        {QStringLiteral("--simulate"), folder_->filePath(QStringLiteral("scenario.json")),
         QStringLiteral("--open"), QStringLiteral("Second"), QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.status, 2);
    QCOMPARE(host.errors.size(), 1);
    QVERIFY2(host.errors[0].contains(QStringLiteral("scenario.json")) && host.errors[0].contains(place),
             qPrintable(host.errors[0]));
    // not even a tool was loaded
    QCOMPARE(folder_->events(), QStringList());
}

PADSCOPE_TESTS(RefusalTest);
#include "tst_refusals.moc"
