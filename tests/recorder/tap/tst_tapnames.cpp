#include <dlfcn.h>
#include <QProcess>
#include <QTemporaryDir>

#include "entrypoints.h"
#include "simulator/simulatedlibrary.h"
#include "support/capturedoutput.h"
#include "support/tests.h"

/// Which names the tap has, and of which library.
class TapNamesTests : public QObject
{
    Q_OBJECT

private slots:
    void hasTheNamesThatTheLibraryHas_data();
    void hasTheNamesThatTheLibraryHas();
    void hasTheNamesOfTheSimulatorsControl();
    void nothingRefersToTheExports();
    void isNeverItsOwnLibrary();
    void theUsersChoiceComesFirst();
};

void TapNamesTests::hasTheNamesThatTheLibraryHas_data()
{
    addColumns<QByteArray>("driver");
    addRow("all", QByteArray(SIMULATOR_FILE));
    addRow("some", QByteArray(SIMULATOR_OLD));
    addRow("none", QByteArray("/nowhere/at/all"));
}

void TapNamesTests::hasTheNamesThatTheLibraryHas()
{
    QFETCH(QByteArray, driver);
    qputenv("PADSCOPE_DRIVER", driver);
    void *real = dlopen(driver, RTLD_NOW);
    void *tap = dlopen(TAP_FILE, RTLD_NOW);
    QVERIFY(tap);
    int found = 0;
#define COMPARE(name)                                                                                        \
    QCOMPARE(dlsym(tap, #name) != nullptr, real && dlsym(real, #name));                                      \
    found += int(dlsym(tap, #name) != nullptr);
    ORVEX_LOOKUPS(COMPARE)
#undef COMPARE
    QCOMPARE(found > 0, real != nullptr);
    QCOMPARE(dlsym(tap, "orvexsim_send") != nullptr, real != nullptr);
    QCOMPARE(dlclose(tap), 0);
    QVERIFY(!dlopen(TAP_FILE, RTLD_NOW | RTLD_NOLOAD));
    if (real)
        dlclose(real);
}

void TapNamesTests::hasTheNamesOfTheSimulatorsControl()
{
    qputenv("PADSCOPE_DRIVER", SIMULATOR_FILE);
    void *tap = dlopen(TAP_FILE, RTLD_NOW);
    QVERIFY(tap);
    int found = 0;
#define COUNT(member, name) found += dlsym(tap, #name) != nullptr ? 1 : 0;
    ORVEXSIM_FUNCTIONS(COUNT)
#undef COUNT
    QCOMPARE(found, 28);
    dlclose(tap);
}

/// A resolver that runs while the tap is loaded would read a table that is not there yet.
void TapNamesTests::nothingRefersToTheExports()
{
    QProcess readelf;
    readelf.start("readelf", {"--relocs", "--wide", TAP_FILE});
    QVERIFY(readelf.waitForFinished());
    const QString relocations = readelf.readAllStandardOutput();
    QVERIFY(relocations.contains("R_X86_64_") || relocations.contains("R_AARCH64_"));
    QVERIFY2(!relocations.contains(" orvex"), qPrintable(relocations));
    QVERIFY2(!relocations.contains("IRELATIV"), qPrintable(relocations));
}

void TapNamesTests::isNeverItsOwnLibrary()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath("driver.so");
    QVERIFY(QFile::link(TAP_FILE, link));
    qputenv("PADSCOPE_DRIVER", link.toUtf8());
    CapturedOutput errors(stderr);
    void *tap = dlopen(TAP_FILE, RTLD_NOW);
    QCOMPARE(errors.text(), "padscope: this is the tap, no driver library: " + link.toUtf8() + '\n');
    QVERIFY(tap);
    QVERIFY(!dlsym(tap, "orvexAttach"));
    dlclose(tap);
    QVERIFY(!dlopen(TAP_FILE, RTLD_NOW | RTLD_NOLOAD));
}

void TapNamesTests::theUsersChoiceComesFirst()
{
    qputenv("PADSCOPE_DRIVER", "/nowhere/at/all");
    qputenv("PADSCOPE_DRIVER_OPTION", SIMULATOR_OLD);
    void *tap = dlopen(TAP_FILE, RTLD_NOW);
    qunsetenv("PADSCOPE_DRIVER_OPTION");
    QVERIFY(tap);
    QVERIFY(dlsym(tap, "orvexAttach"));
    QVERIFY(!dlsym(tap, "orvexSetTouchDestinationEx"));
    dlclose(tap);
}

PADSCOPE_TESTS(TapNamesTests);
#include "tst_tapnames.moc"
