#include <algorithm>
#include <QDir>
#include <QFile>

#include "mainwindow/testwindow.h"
#include "support/otherstore.h"

/// Settings files that Qt cannot decode without ending the program.
class DamagedSettings : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void fileIsSetAside();
    void fileOfTheOrganisationIsNotRead();
    void longLinesAreNoDamage();
    void zerosOfAnotherProgramAreNoDamage();
};

namespace {

// A list that promises 671 million entries.
const QByteArray listWithoutEnd = "[General]\nClassic%20Mode=@Variant(\\0\\0\\0\\t(\\0\\0\\0\\x40)\n";

QString organisationFile()
{
    return QDir::homePath() + "/config/Corvane.conf";
}

QString ownFile(const char *suffix = "")
{
    return QDir::homePath() + "/config/Corvane/qorvexgraph.conf" + suffix;
}

void write(const QString &path, const QByteArray &bytes)
{
    QVERIFY(QDir().mkpath(QDir::homePath() + "/config/Corvane"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void DamagedSettings::cleanup()
{
    // Not by way of QSettings, which would decode them.
    QDir(QDir::homePath() + "/config").removeRecursively();
}

void DamagedSettings::fileIsSetAside()
{
    write(ownFile(), listWithoutEnd);
    write(ownFile(".damaged-1"), "an older one");
    TestWindow window;
    QCOMPARE(window.commandLine->historyLines(), QStringList());
    window.show();
    window.commandLine->addToHistory("line");
    window.close();
    window.settingsStore()->sync();
    QCOMPARE(contentsOf(ownFile(".damaged-2")), listWithoutEnd);
    QCOMPARE(contentsOf(ownFile(".damaged-1")), QByteArray("an older one"));
    QVERIFY(contentsOf(ownFile()).contains("[history]\n0=line\n"));
}

void DamagedSettings::fileOfTheOrganisationIsNotRead()
{
    write(organisationFile(), listWithoutEnd);
    write(ownFile(), "[history]\n0=kept\n");
    TestWindow window;
    QCOMPARE(window.commandLine->historyLines(), QStringList("kept"));
    window.close();
    window.settingsStore()->sync();
    QCOMPARE(contentsOf(organisationFile()), listWithoutEnd);
    QVERIFY(contentsOf(ownFile()).contains("0=kept"));
    QVERIFY(!QFile::exists(ownFile(".damaged-1")));
}

void DamagedSettings::longLinesAreNoDamage()
{
    const QStringList lines{QString(32000, 'a'),           QString(32000, '"'),
                            QString(32000, '\\') + '@',    QStringLiteral("\\0").repeated(16000),
                            QString(32000, QChar(0x3042)), QString(13000, QChar(0))};
    for (int i = 0; i < lines.size(); ++i)
        otherStore().setValue(QString("history/%1").arg(i), lines.at(i));
    QVERIFY(QFileInfo(ownFile()).size() > 300000);
    const TestWindow window;
    QStringList read = window.commandLine->historyLines();
    std::reverse(read.begin(), read.end());
    QCOMPARE(read, lines);
    QVERIFY(!QFile::exists(ownFile(".damaged-1")));
}

void DamagedSettings::zerosOfAnotherProgramAreNoDamage()
{
    const QByteArray contents = "[history]\n0=of the organisation\n[Other]\nPicture=@ByteArray(" +
                                QByteArray("\\0").repeated(13000) + ")\n";
    write(organisationFile(), contents);
    TestWindow window;
    QCOMPARE(window.commandLine->historyLines(), QStringList("of the organisation"));
    QVERIFY(window.settingsStore()->fallbacksEnabled());
    QCOMPARE(contentsOf(organisationFile()), contents);
}

PADSCOPE_TESTS(DamagedSettings);
#include "tst_damagedsettings.moc"
