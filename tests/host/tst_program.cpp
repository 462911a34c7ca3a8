#include "host/examplefolder.h"
#include "host/hostrun.h"
#include "support/tests.h"

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
    void leavesTheToolkitItsOptions();
    void showsHelpAndVersion();
    void runsTheScriptInOrder();
    void opensTheFirstToolByDefault();
    void waitsForTheRestOfTheTime();
    void closesOnlyAfterTheTime();
    void takesSnapshots();
    void followsScaling();
    void listsScenarios();
    void prefersTheScenarioOfTheOption();
    void findsDriver();
    void translates();

private:
    std::unique_ptr<ToolFolder> folder_;
};

void ProgramTest::init()
{
    folder_ = std::make_unique<ToolFolder>();
}

void ProgramTest::cleanup()
{
    folder_.reset();
}

void ProgramTest::lists()
{
    const Run host = run(folder_->with({QStringLiteral("--list")}));
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
    const Run host = run(folder_->with({QStringLiteral("--list")}));
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
    const Run host = run(folder_->with({QStringLiteral("--list")}), environment);
    QCOMPARE(host.output.count(QLatin1Char('\n')), 2);
    QCOMPARE(host.status, 0);
}

void ProgramTest::leavesTheToolkitItsOptions()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    const Run host = run(
        folder_->with({QStringLiteral("-platform"), QStringLiteral("offscreen"), QStringLiteral("-reverse"),
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
    QVERIFY(help.output.contains(QStringLiteral("Exit status: 0 when")));
    const Run version = run({QStringLiteral("--version")});
    QCOMPARE(version.output, QStringLiteral("tendro-host 1.0\n"));
    QCOMPARE(version.status, 0);
}

void ProgramTest::runsTheScriptInOrder()
{
    const Run host =
        run(folder_->with({QStringLiteral("--rows"), QStringLiteral("--tab"), QStringLiteral("Second=0.1"),
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
        run(folder_->with({QStringLiteral("--rows"), QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.errors, QStringList({QStringLiteral("tendro-host: %1: its widget() gives no window")
                                           .arg(folder_->filePath(QStringLiteral("example_windowless.so"))),
                                       QStringLiteral("tendro-host: Windowless can't be opened")}));
    QCOMPARE(host.status, 2);
}

void ProgramTest::waitsForTheRestOfTheTime()
{
    QElapsedTimer clock;
    clock.start();
    const Run host = run(folder_->with({QStringLiteral("--tab"), QStringLiteral("Second=0.3"),
                                        QStringLiteral("--for"), QStringLiteral("0.8")}));
    QCOMPARE(host.status, 0);
    // the time is the subject: at least 0.8 s from the start of the script
    QVERIFY2(clock.elapsed() >= 800, qPrintable(QString::number(clock.elapsed())));
}

void ProgramTest::closesOnlyAfterTheTime()
{
    const Run host = run(folder_->with({QStringLiteral("--for"), QStringLiteral("0")}));
    QCOMPARE(host.status, 0);
    // no tool was asked for
    QCOMPARE(folder_->events(),
             QStringList({QStringLiteral("plugin destroyed"), QStringLiteral("plugin destroyed")}));
}

void ProgramTest::takesSnapshots()
{
    const QString pictures = folder_->filePath(QStringLiteral("pictures"));
    const Run host =
        run(folder_->with({QStringLiteral("--open"), QStringLiteral("Second"), QStringLiteral("--for"),
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
        run(folder_->with(
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

void ProgramTest::prefersTheScenarioOfTheOption()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ORVEXSIM_SCENARIO"), QStringLiteral("none-such"));
    process.setProcessEnvironment(environment);
    const auto complaints = [&](const QStringList &arguments) {
        process.start(QStringLiteral(TENDRO_HOST),
                      folder_->with(arguments + QStringList{QStringLiteral("--for"), QStringLiteral("0")}));
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
    const Run host = run(folder_->with(
        {QStringLiteral("--driver"), QStringLiteral(EXAMPLE_LIBRARIES "/liborvexboardex.so"),
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
    const Run host = run(folder_->with({QStringLiteral("--list"), QStringLiteral("--translation"),
                                        folder_->filePath(QStringLiteral("german.qm"))}));
    QCOMPARE(host.errors, QStringList());
    QCOMPARE(host.output.count(QStringLiteral("\tFassung 1.0\t")), 2);
}

PADSCOPE_TESTS(ProgramTest);
#include "tst_program.moc"
