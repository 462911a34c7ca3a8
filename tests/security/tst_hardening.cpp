#include "support/tests.h"
#include <QProcess>

/// The hardening flags, read back from what was built.
class Hardening : public QObject
{
    Q_OBJECT

private slots:
    void binaries_data();
    void binaries();
    void programIsPositionIndependent();
    void functionsAreFortified();
};

namespace {

QString readelf(const QStringList &options, const char *file)
{
    QProcess process;
    process.start(QStringLiteral("readelf"),
                  options + QStringList{QStringLiteral("-W"), QLatin1String(file)});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        qFatal("readelf %s: %s", file, process.readAllStandardError().constData());
    return QString::fromLatin1(process.readAllStandardOutput());
}

/// Flags of a program header, such as "RW "; empty without one.
QString segmentFlags(const QString &headers, const char *segment)
{
    const QRegularExpression line(
        QStringLiteral("^ +%1 (?: *0x[0-9a-f]+){5} ([R ][W ][E ])").arg(QLatin1String(segment)),
        QRegularExpression::MultilineOption);
    return line.match(headers).captured(1);
}

} // namespace

void Hardening::binaries_data()
{
    QTest::addColumn<QByteArray>("file");
    addRow("the plugin", QByteArray(PADSCOPE_PLUGIN));
    addRow("the host", QByteArray(TENDRO_HOST));
    addRow("the simulator", QByteArray(SIMULATOR_FILE));
}

void Hardening::binaries()
{
    QFETCH(QByteArray, file);
    const QString headers = readelf({QStringLiteral("--program-headers")}, file);
    QCOMPARE(segmentFlags(headers, "GNU_RELRO"), QStringLiteral("R  "));
    QCOMPARE(segmentFlags(headers, "GNU_STACK"), QStringLiteral("RW "));
    QVERIFY(!headers.contains(QStringLiteral(" RWE ")));
    // Every name is bound at the start, so that the table of them is read-only from then on.
    const QString dynamic = readelf({QStringLiteral("--dynamic")}, file);
    QVERIFY2(dynamic.contains(QRegularExpression(QStringLiteral("\\(FLAGS_1\\) +Flags: NOW"))),
             qPrintable(dynamic));
    const QString symbols = readelf({QStringLiteral("--dyn-syms")}, file);
    QVERIFY2(symbols.contains(QStringLiteral("__stack_chk_fail")), qPrintable(symbols));
}

void Hardening::programIsPositionIndependent()
{
    const QString header = readelf({QStringLiteral("--file-header")}, TENDRO_HOST);
    QVERIFY2(header.contains(QRegularExpression(QStringLiteral("Type: +DYN \\(Position-Independent"))),
             qPrintable(header));
}

void Hardening::functionsAreFortified()
{
#ifndef PADSCOPE_FORTIFIED
    QSKIP("takes an optimised build without sanitizers");
#endif
    const QString symbols = readelf({QStringLiteral("--dyn-syms")}, PADSCOPE_PLUGIN);
    QVERIFY2(symbols.contains(QRegularExpression(QStringLiteral(" __\\w+_chk@"))), qPrintable(symbols));
}

PADSCOPE_TESTS(Hardening);
#include "tst_hardening.moc"
