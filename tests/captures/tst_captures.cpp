#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include "support/tests.h"

namespace {

QByteArray contentOf(const QString &name)
{
    QFile file(QDir(TEST_FOLDER).filePath(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// What `padscope` prints in the folder of the captures, on standard output or on standard error.
QByteArray printed(const QStringList &arguments, QProcess::ProcessChannel channel)
{
    QProcess process;
    process.setWorkingDirectory(TEST_FOLDER);
    process.start(PADSCOPE_PROGRAM, arguments);
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return "did not end";
    return channel == QProcess::StandardOutput ? process.readAllStandardOutput()
                                               : process.readAllStandardError();
}

QStringList namesOf(const char *pattern)
{
    QStringList names = QDir(TEST_FOLDER).entryList({pattern}, QDir::Files, QDir::Name);
    names.removeAll("CMakeLists.txt");
    for (QString &name : names)
        name = name.section('.', 0, 0);
    return names;
}

} // namespace

/// Each capture of this folder, and what must come out: text, rows, information, and what a check finds. What
/// has no file gives nothing.
class CaptureTests : public QObject
{
    Q_OBJECT

private slots:
    void everyFileHasItsCapture();
    void output_data();
    void output();
    void replay_data();
    void replay();
};

void CaptureTests::everyFileHasItsCapture()
{
    const QStringList captures = namesOf("*.pcapng");
    QVERIFY(captures.size() >= 12);
    QCOMPARE(namesOf("*.txt"), captures);
    QCOMPARE(namesOf("*.json"), captures);
    for (const QString &name : namesOf("*.rows") + namesOf("*.check"))
        QVERIFY2(captures.contains(name), qPrintable(name));
    for (const QString &name : captures)
        QVERIFY2(contentOf(name + ".pcapng").size() < 32 * 1024, qPrintable(name));
}

void CaptureTests::output_data()
{
    addColumns<QString, QStringList, int>("file", "arguments", "channel");
    for (const QString &name : namesOf("*.pcapng")) {
        const QString capture = name + ".pcapng";
        const auto add = [&](const char *ending, const QStringList &arguments,
                             QProcess::ProcessChannel channel = QProcess::StandardOutput) {
            addRow(qPrintable(name + ending), name + ending, QStringList(arguments + QStringList{capture}),
                   int(channel));
        };
        add(".txt", {"decode"});
        add(".rows", {"decode", "--format", "rows"});
        add(".json", {"info", "--format", "json"});
        add(".check", {"check"}, QProcess::StandardError);
    }
}

void CaptureTests::output()
{
    QFETCH(QString, file);
    QFETCH(QStringList, arguments);
    QFETCH(int, channel);
    const QList<QByteArray> actual = printed(arguments, QProcess::ProcessChannel(channel)).split('\n');
    const QList<QByteArray> expected = contentOf(file).split('\n');
    for (int i = 0; i < qMin(actual.size(), expected.size()); ++i)
        QVERIFY2(actual[i] == expected[i],
                 qPrintable(QString("%1:%2: ").arg(file).arg(i + 1) + QString::fromUtf8(actual[i])));
    QCOMPARE(actual.size(), expected.size());
}

/// Each session, with the number of its reports.
void CaptureTests::replay_data()
{
    addColumns<QString, QString, int, bool>("capture", "session", "reports", "isOnlySession");
    for (const QString &name : namesOf("*.pcapng")) {
        const QJsonArray sessions =
            QJsonDocument::fromJson(contentOf(name + ".json")).array().at(0)["sessions"].toArray();
        for (const QJsonValue &session : sessions) {
            const QString number = session["session"].toString();
            addRow(qPrintable(name + ' ' + number), name + ".pcapng", number,
                   session["kinds"]["report"].toInt(), sessions.size() == 1);
        }
    }
}

/// The tool gets all of its reports from the simulator, as they were.
void CaptureTests::replay()
{
    QFETCH(QString, capture);
    QFETCH(QString, session);
    QFETCH(int, reports);
    QFETCH(bool, isOnlySession);
    const QTemporaryDir folder;
    QFile scenario(folder.filePath("replay.json"));
    QVERIFY(scenario.open(QFile::WriteOnly));
    const QJsonObject replay{
        {"capture", QDir(TEST_FOLDER).filePath(capture)}, {"rate", "max"}, {"session", session}};
    scenario.write(QJsonDocument(QJsonObject{{"title", capture}, {"replay", replay}}).toJson());
    scenario.close();
    const QString again = folder.filePath("again.pcapng");
    QProcess host;
    host.start(PADSCOPE_PROGRAM, {"record", "-o", again, "--", HOST_PROGRAM, "--plugins",
                                  PADSCOPE_PLUGIN_FOLDER, "--simulate", scenario.fileName(), "--type", "?"});
    QByteArray printed;
    const QByteArray ending = reports == 1 ? "\n" : "s\n";
    const auto hasEnded = [&] {
        return (printed += host.readAllStandardError()).contains(" report" + ending);
    };
    QTRY_VERIFY2_WITH_TIMEOUT(hasEnded(), printed, 60'000);
    host.terminate();
    QVERIFY(host.waitForFinished(30'000));
    const QByteArray expected =
        QByteArray::number(reports) + " of " + QByteArray::number(reports) + " report" + ending;
    QVERIFY2(printed.contains("; " + expected), printed);
    if (!isOnlySession)
        return;
    QProcess diff;
    diff.setWorkingDirectory(TEST_FOLDER);
    diff.start(PADSCOPE_PROGRAM, {"diff", capture, again});
    QVERIFY(diff.waitForFinished(30'000));
    QVERIFY2(diff.exitCode() == 0, diff.readAllStandardOutput() + diff.readAllStandardError());
}

PADSCOPE_TESTS(CaptureTests);
#include "tst_captures.moc"
