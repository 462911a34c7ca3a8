#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "support/tests.h"

/// Runs of programs and what comes of them, from the file that TRANSCRIPTS names:
///
///     unknown tool                              a name, after an empty line
///     $ tendro-host --plugins . --open Third    a shell script, which ends at its first error
///     > ...                                     what it writes to standard output,
///     ! tendro-host: --open Third: no such ...  to standard error,
///     = 2                                       and its exit status, unless that is 0
///
/// A script runs in an empty folder, its home, which is a dot in the expected lines; "<TAB>" is a tab there.
/// What stands in the file before the first name is run before each script. '#' begins a comment.
class Transcripts : public QObject
{
    Q_OBJECT

private slots:
    void run_data();
    void run();
};

namespace {

/// Without what Qt's offscreen platform says of itself.
QStringList markedLines(const char *mark, const QByteArray &text, const QString &folder)
{
    static const QRegularExpression platform("^(QStandardPaths: |This plugin does not support )");
    QStringList lines = QString::fromUtf8(text).replace(folder, ".").replace('\t', "<TAB>").split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    QStringList marked;
    for (const QString &line : lines) {
        if (!platform.match(line).hasMatch())
            marked += line.isEmpty() ? mark : mark + (' ' + line);
    }
    return marked;
}

} // namespace

void Transcripts::run_data()
{
    addColumns<QString, QStringList>("script", "expected");
    QFile file(qEnvironmentVariable("TRANSCRIPTS"));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    const QRegularExpression comment("^#.*\n", QRegularExpression::MultilineOption);
    QString beginning;
    for (const QString &part : QString::fromUtf8(file.readAll()).remove(comment).split("\n\n")) {
        const QStringList lines = part.split('\n', Qt::SkipEmptyParts);
        const QStringList expected = lines.filter(QRegularExpression("^[>!=]"));
        QStringList commands = lines.filter(QRegularExpression("^\\$ "));
        const bool isNamed = commands.size() + expected.size() + 1 == lines.size();
        QVERIFY2(isNamed || beginning.isEmpty(), qPrintable(part));
        const QString script = commands.replaceInStrings(QRegularExpression("^\\$ "), "").join('\n') + '\n';
        if (isNamed)
            addRow(qPrintable(lines.first()), beginning + script, expected);
        else
            beginning = script;
    }
}

void Transcripts::run()
{
    QFETCH(QString, script);
    QFETCH(QStringList, expected);
    const QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", folder.path());
    environment.insert("XDG_CONFIG_HOME", folder.filePath("config"));
    QProcess shell;
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(folder.path());
    // Also ends what the script has started.
    shell.start("timeout", {"60", "sh", "-euc", script});
    QVERIFY(shell.waitForFinished(-1));
    QStringList seen = markedLines(">", shell.readAllStandardOutput(), folder.path()) +
                       markedLines("!", shell.readAllStandardError(), folder.path());
    if (shell.exitCode() != 0)
        seen += QString("= %1").arg(shell.exitCode());
    if (seen != expected)
        qInfo().noquote() << seen.join('\n');
    QCOMPARE(seen, expected);
}

PADSCOPE_TESTS(Transcripts);
#include "tst_transcripts.moc"
