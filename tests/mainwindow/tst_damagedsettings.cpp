#include <algorithm>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTest>

#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "support/tests.h"

/// Settings files that Qt cannot decode without ending the program.
class DamagedSettings : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void fileIsSetAside();
    void fileOfTheOrganisationIsNotRead();
    void longLinesAreRead();
    void zerosOfAnotherProgramAreNoDamage();
    void zerosInTheHistoryAreNoDamage();
};

namespace {

// A list that promises 671 million entries.
const QByteArray listWithoutEnd = "[General]\nClassic%20Mode=@Variant(\\0\\0\\0\\t(\\0\\0\\0\\x40)\n";

QString ownFile()
{
    return QDir::homePath() + "/config/Corvane/qorvexgraph.conf";
}

QString organisationFile()
{
    return QDir::homePath() + "/config/Corvane.conf";
}

void write(const QString &path, const QByteArray &bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What a session without settings does, and what it saves.
void useWindow()
{
    qorvexgraph window;
    QCOMPARE(window.commandLine->historyLines(), QStringList());
    window.show();
    window.commandLine->addToHistory("line");
    window.close();
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
    write(ownFile() + ".damaged-1", "an older one");
    useWindow();
    QCOMPARE(contentsOf(ownFile() + ".damaged-2"), listWithoutEnd);
    QCOMPARE(contentsOf(ownFile() + ".damaged-1"), QByteArray("an older one"));
    QCOMPARE(QSettings("Corvane", "qorvexgraph").value("history/0").toString(), QString("line"));
    QVERIFY(contentsOf(ownFile()).contains("0=line"));
}

void DamagedSettings::fileOfTheOrganisationIsNotRead()
{
    write(organisationFile(), listWithoutEnd);
    write(ownFile(), "[history]\n0=kept\n");
    {
        qorvexgraph window;
        QCOMPARE(window.commandLine->historyLines(), QStringList("kept"));
        window.close();
    }
    QCOMPARE(contentsOf(organisationFile()), listWithoutEnd);
    QVERIFY(contentsOf(ownFile()).contains("0=kept"));
    QVERIFY(!QFile::exists(ownFile() + ".damaged-1"));
}

void DamagedSettings::longLinesAreRead()
{
    const QStringList lines{QString(32000, 'a'), QString(32000, '"'), QString(32000, '\\') + '@',
                            QStringLiteral("\\0").repeated(16000), QString(32000, QChar(0x3042))};
    {
        QSettings settings("Corvane", "qorvexgraph");
        for (int i = 0; i < lines.size(); ++i)
            settings.setValue(QStringLiteral("history/%1").arg(i), lines.at(i));
    }
    QVERIFY(QFileInfo(ownFile()).size() > 300000);
    const qorvexgraph window;
    QStringList read = window.commandLine->historyLines();
    std::reverse(read.begin(), read.end());
    QCOMPARE(read, lines);
    QVERIFY(!QFile::exists(ownFile() + ".damaged-1"));
}

void DamagedSettings::zerosOfAnotherProgramAreNoDamage()
{
    const QByteArray contents = "[history]\n0=of the organisation\n[Other]\nPicture=@ByteArray(" +
                                QByteArray("\\0").repeated(13000) + ")\n";
    write(organisationFile(), contents);
    const qorvexgraph window;
    QCOMPARE(window.commandLine->historyLines(), QStringList("of the organisation"));
    QVERIFY(window.settings.fallbacksEnabled());
    QCOMPARE(contentsOf(organisationFile()), contents);
}

void DamagedSettings::zerosInTheHistoryAreNoDamage()
{
    const QString line(13000, QChar(0));
    QSettings("Corvane", "qorvexgraph").setValue("history/0", line);
    const qorvexgraph window;
    QCOMPARE(window.commandLine->historyLines(), QStringList(line));
    QVERIFY(!QFile::exists(ownFile() + ".damaged-1"));
}

PADSCOPE_TESTS(DamagedSettings);
#include "tst_damagedsettings.moc"
