#include <QProcess>
#include <QRegularExpression>

#include "records.h"
#include "shark.h"
#include "support/datalines.h"
#include "support/tests.h"

namespace {

/// In the order of layouts.txt.
const QStringList prefixes{"signal1.", "signal2.",     "signal3.", "signal4.",  "signal5.", "signal6.",
                           "phase.",   "penIdentity.", "dualPen.", "position.", "adc."};

/// A report of a line of layouts.txt: byte i holds 80 + i (hexadecimal).
QByteArray reportOf(const QStringList &layout)
{
    QByteArray report;
    for (int i = 0; i < layout[4].toInt(); ++i)
        report += char(0x80 + i);
    report[0] = char(layout[4].toInt());
    report[1] = char(layout[2].toInt());
    if (layout[3] != "0")
        report[2] = char(layout[3].toInt());
    return packetBytes(1, 1, 0, 1001, 0, report);
}

/// "-126" of "s82".
QString numberOf(const QString &value)
{
    const qint64 number = value.midRef(1).toLongLong(nullptr, 16);
    const qint64 span = qint64(1) << 4 * (value.size() - 1);
    return QString::number(value[0] == 's' && number >= span / 2 ? number - span : number);
}

} // namespace

/// Names, labels and values in Wireshark, beside what tests have of them by hand.
class DissectorFieldTests : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void labels();
    void namesOfValues();
    void valuesOfEveryLayout();

private:
    QStringList glossary(const char *what) const;

    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QVector<QStringList> fields = dataLines(TEST_FOLDER "/fields.txt", 3, 3);
};

void DissectorFieldTests::initTestCase()
{
    environment.insert("HOME", home.path());
    QProcess padscope;
    padscope.setProcessEnvironment(environment);
    padscope.start(PADSCOPE, {"dissector", "--install"});
    QVERIFY(padscope.waitForFinished(60'000));
    QCOMPARE(padscope.exitCode(), 0);
}

/// What Wireshark knows of our fields: lines of tabs. It knows a quarter of a million of others.
QStringList DissectorFieldTests::glossary(const char *what) const
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start("sh",
                  {"-c", QString("tshark -G %1 | grep -P '^[FV]\\t([^\\t]*\\t)?padscope\\.'").arg(what)});
    process.waitForFinished(60'000);
    return QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

void DissectorFieldTests::labels()
{
    QStringList found;
    for (const QString &line : glossary("fields")) {
        const QStringList cells = line.split('\t');
        found += cells[2] + " | " + cells[1] + " | " + cells[3];
    }
    found.sort();
    QStringList expected;
    for (const QStringList &field : fields)
        expected += field.join(" | ");
    expected.sort();
    for (int i = 0; i < qMin(found.size(), expected.size()); ++i)
        QCOMPARE(found[i], expected[i]);
    QCOMPARE(found.size(), expected.size());
}

void DissectorFieldTests::namesOfValues()
{
    QStringList found = glossary("values");
    found.replaceInStrings("V\tpadscope.", QString()).sort();
    const QStringList ofCalls = found.filter(QRegularExpression("^call\\t"));
    QCOMPARE(ofCalls.size(), 48);
    QVERIFY(ofCalls.contains("call\t0\tnone"));
    QVERIFY(ofCalls.contains("call\t1\torvexAttach"));
    QVERIFY(ofCalls.contains("call\t8\torvexSetXferMask"));
    QVERIFY(ofCalls.contains("call\t47\torvexReverseButtons"));
    const QStringList others{"change.state\t1\tseen",
                             "change.state\t2\tgone",
                             "end.reason\t1\texit",
                             "end.reason\t2\tsignal",
                             "end.reason\t3\tunknown",
                             "end.reason\t4\tslice",
                             "kind\t1\treport",
                             "kind\t2\tcall",
                             "kind\t3\treturn",
                             "kind\t4\thotplug",
                             "kind\t5\tstatus",
                             "kind\t6\tmark",
                             "kind\t7\tboard",
                             "kind\t8\tend",
                             "penIdentity.penKind\t0\tTeacher",
                             "penIdentity.penKind\t1\tStudent"};
    QCOMPARE(found.filter(QRegularExpression("^(?!call\\t)")), others);
}

void DissectorFieldTests::valuesOfEveryLayout()
{
    const QVector<QStringList> layouts = dataLines(LAYOUTS_FILE, 6, 6);
    QCOMPARE(layouts.size(), prefixes.size());
    QHash<QString, QString> labels;
    for (const QStringList &field : fields)
        labels[field[0]] = field[1];
    Shark shark;
    QList<QByteArray> packets;
    for (const QStringList &layout : layouts)
        packets += reportOf(layout);
    shark.write(packets);
    QStringList names;
    for (int i = 0; i < layouts.size(); ++i) {
        for (const QString &field : layouts[i][5].split(", "))
            names += "padscope." + prefixes[i] + field.section(' ', 0, 0);
    }
    const QList<QStringList> shown = shark.fields(names);
    const QList<QStringList> trees = shark.trees();
    QCOMPARE(trees.size(), layouts.size());
    for (int i = 0, first = 0; i < layouts.size(); ++i) {
        const QStringList fieldsOfLayout = layouts[i][5].split(", ");
        QStringList values;
        QStringList lines;
        for (int field = 0; field < fieldsOfLayout.size(); ++field) {
            values += numberOf(fieldsOfLayout[field].section(' ', 1));
            lines += "        " + labels[names[first + field]] + ": " + values.last();
        }
        if (layouts[i][1] == "PenIdentityReport") // 33923 names no kind of pen
            lines[0] = "        Pen: Unknown (33923)";
        if (layouts[i][1] == "AdcReport") { // 131 * 4.88 mV
            values[1] = "0.63928";
            lines[1] = "        Voltage: 0.63928 V";
        }
        QCOMPARE(shown[i].mid(first, values.size()), values);
        QCOMPARE(shown[i].filter(QRegularExpression(".")), values);
        QCOMPARE(trees[i].mid(trees[i].size() - lines.size()), lines);
        first += values.size();
    }
}

PADSCOPE_TESTS(DissectorFieldTests);
#include "tst_dissectorfields.moc"
