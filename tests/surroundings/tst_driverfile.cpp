#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "support/tests.h"
#include "surroundings/childrun.h"

/// A driver library that is missing or damaged: the host starts, opens the tool, types and closes all the
/// same.
class DriverFile : public QObject
{
    Q_OBJECT

private slots:
    void file_data();
    void file();

private:
    static QByteArray simulator();
};

QByteArray DriverFile::simulator()
{
    QFile library(QStringLiteral(SIMULATOR_FILE));
    return library.open(QIODevice::ReadOnly) ? library.readAll() : QByteArray();
}

void DriverFile::file_data()
{
    addColumns<QByteArray, QByteArray, bool>("contents", "loaderSays", "rows");
    const QByteArray whole = simulator();
    QByteArray otherMachine = whole;
    otherMachine[18] = '\xb7'; // e_machine: AArch64
    QByteArray otherClass = whole;
    otherClass[4] = 1; // ELFCLASS32
    addRow("missing", QByteArray(), QByteArray("cannot open shared object file"), false);
    addRow("a text file", QByteArray(4096, 'x'), QByteArray("invalid ELF header"), false);
    addRow("a short text file", QByteArray("library\n"), QByteArray("file too short"), false);
    addRow("cut within its header", whole.left(40), QByteArray("file too short"), false);
    addRow("for another machine", otherMachine, QByteArray("cannot open shared object file"), false);
    addRow("for another word size", otherClass, QByteArray("wrong ELF class"), false);
    addRow("whole", whole, QByteArray(), true);
}

void DriverFile::file()
{
    QFETCH(QByteArray, contents);
    QFETCH(QByteArray, loaderSays);
    QFETCH(bool, rows);
    const QTemporaryDir folder;
    if (!contents.isEmpty()) {
        QFile library(folder.filePath("liborvexboardex.so.1"));
        QVERIFY(library.open(QIODevice::WriteOnly));
        QCOMPARE(library.write(contents), qint64(contents.size()));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_LIBRARY_PATH", folder.path());
    // Rows take their time; nothing comes from a library that can't be loaded.
    const char *const tab = rows ? "Monitor=2" : "Monitor=0.1";
    const ChildRun result = runChild(TENDRO_HOST,
                                     {"--plugins", PADSCOPE_PLUGIN_FOLDER, "--open", "TendroPadscope",
                                      "--type", "?", "--tab", tab, "--rows"},
                                     environment);
    QVERIFY2(result.status == 0, result.errors);
    QVERIFY2(result.errors.contains(loaderSays), result.errors);
    if (!rows)
        QVERIFY2(result.errors.contains("liborvexboardex.so.1: "), result.errors);
    QVERIFY2(result.output.isEmpty() != rows, result.output);
}

PADSCOPE_TESTS(DriverFile);
#include "tst_driverfile.moc"
