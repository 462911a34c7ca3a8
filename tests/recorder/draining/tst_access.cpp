#include <algorithm>
#include <csignal>
#include <QDir>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

namespace {

constexpr uid_t nobody = 65534;
const QStringList asNobody{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};

struct stat statusOf(const QString &file)
{
    struct stat status = {};
    stat(QFile::encodeName(file), &status);
    return status;
}

/// Inodes of the recorders' memory that a process has mapped or open.
QStringList ringsOf(const QString &process)
{
    QStringList rings;
    QFile maps("/proc/" + process + "/maps");
    if (maps.open(QFile::ReadOnly)) {
        const QStringList lines = QString(maps.readAll()).split('\n').filter("/memfd:padscope");
        for (const QString &line : lines)
            rings += line.simplified().section(' ', 4, 4);
    }
    const QDir files("/proc/" + process + "/fd");
    const QStringList entries = files.entryList(QDir::Files | QDir::System);
    for (const QString &entry : entries) {
        const QString path = files.filePath(entry);
        if (QFile::symLinkTarget(path).contains("memfd:padscope"))
            rings += QString::number(qulonglong(statusOf(path).st_ino));
    }
    return rings;
}

bool isHeld(const QString &ring)
{
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    return std::any_of(processes.begin(), processes.end(),
                       [&ring](const QString &process) { return ringsOf(process).contains(ring); });
}

} // namespace

/// Who may read what, and that nothing is left behind.
class AccessTests : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheOwnerReadsTheFile();
    void aPlainUserRecords();
    void aHostOfAnotherUserIsNotRecorded();
    void nothingIsLeftInMemory_data();
    void nothingIsLeftInMemory();
};

void AccessTests::onlyTheOwnerReadsTheFile()
{
    RecordedRun run;
    const QStringList command{PADSCOPE_FILE, "record", "-o", run.file(), "--", host, byName, "attach"};
    QCOMPARE(run.runAlone(QStringList{"sh", "-c", "umask 0; \"$@\"", "sh"} + command), 0);
    QCOMPARE(statusOf(run.file()).st_mode, mode_t{S_IFREG | 0600});
}

void AccessTests::aPlainUserRecords()
{
    if (geteuid() != 0)
        QSKIP("all other tests run as a plain user already");
    RecordedRun run;
    QCOMPARE(chown(QFile::encodeName(run.path(".")), nobody, nobody), 0);
    const QStringList command{PADSCOPE_FILE, "record", "-o", run.file(), "--", host, byName, "attach"};
    QCOMPARE(run.runAlone(asNobody + command), 0);
    QCOMPARE(run.output(), (QStringList{"loaded", "attached 1"}));
    QCOMPARE(run.errors(), QStringList());
    QCOMPARE(statusOf(run.file()).st_uid, nobody);
    QCOMPARE(statusOf(run.file()).st_mode, mode_t{S_IFREG | 0600});
    QCOMPARE(run.facts().calls, (QStringList{"11", "return 11", "1", "return 1", "9", "return 9"}));
    QVERIFY(outputOf(PADSCOPE_FILE, {"check", run.file()}).startsWith("0\n"));
}

/// It runs as it would alone.
void AccessTests::aHostOfAnotherUserIsNotRecorded()
{
    if (geteuid() != 0)
        QSKIP("only root starts programs of others");
    RecordedRun run;
    QCOMPARE(chmod(QFile::encodeName(run.path(".")), 0755), 0);
    QCOMPARE(run.run(asNobody + QStringList{host, byName, "attach", "exit=3"}), 3);
    QCOMPARE(run.output(), (QStringList{"loaded", "attached 1"}));
    QCOMPARE(run.errors(),
             (QStringList{"padscope: nothing is recorded: the recorder's memory cannot be mapped: "
                          "Permission denied",
                          "padscope: nothing was recorded: setpriv has not opened the driver library through "
                          "a tap that could record: " SIMULATOR_FOLDER "/liborvexboardex.so.1"}));
    QVERIFY(!run.hasFile());
}

void AccessTests::nothingIsLeftInMemory_data()
{
    addColumns<QString, int, int>("killed", "number", "status");
    addRow("nobody", QString(), 0, 0);
    addRow("host", QString("host"), SIGKILL, 137);
    addRow("host, as of a failed check", QString("host"), SIGABRT, 134);
    addRow("recorder", QString("recorder"), SIGKILL, 137);
}

void AccessTests::nothingIsLeftInMemory()
{
    QFETCH(QString, killed);
    QFETCH(int, number);
    QFETCH(int, status);
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    const QString script = "echo $$ > id; exec $0 $1 attach touch=attached until=end detach";
    run.start({"sh", "-c", script, host, byName});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("attached")), 30'000);
    const QString hostId = QString::number(run.number("id"));
    const QString recorderId = QString::number(run.process.processId());
    const QStringList rings = ringsOf(recorderId);
    QVERIFY(!rings.isEmpty());
    QVERIFY(ringsOf(hostId).contains(rings.first()));
    if (killed == "host")
        QCOMPARE(kill(hostId.toInt(), number), 0);
    else if (killed == "recorder")
        QCOMPARE(kill(recorderId.toInt(), number), 0);
    run.touch("end");
    QCOMPARE(run.finish(), status);
    QTRY_VERIFY_WITH_TIMEOUT(!isHeld(rings.first()), 30'000);
    QCOMPARE(QDir("/dev/shm").entryList({"*padscope*", "*PADSCOPE*"}), QStringList());
}

PADSCOPE_TESTS(AccessTests);
#include "tst_access.moc"
