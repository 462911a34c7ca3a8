#include <cmath>
#include <functional>

#include "bargraph/geometrytext.h"
#include "geometry.h"
#include "integermath.h"
#include "support/datalines.h"
#include "support/tests.h"

namespace {

struct Arguments
{
    int operator[](int index) const { return texts[index].toInt(); }
    QRect area() const { return {(*this)[0], (*this)[1], (*this)[2], (*this)[3]}; }

    QStringList texts;
};

QString textOf(int number)
{
    return QString::number(number);
}

QString textOf(const geometry::BarGroup &group)
{
    return QStringLiteral("%1 %2 %3").arg(group.left).arg(group.centre).arg(group.height);
}

QString textOf(const geometry::Dial &dial)
{
    return QStringList{textOf(dial.centre), textOf(dial.ellipse()), textOf(dial.magnitudeText()),
                       textOf(dial.angleText())}
        .join(' ');
}

QString textOf(const geometry::Meter &meter)
{
    return QStringList{textOf(meter.bar), textOf(meter.rawText), textOf(meter.voltsText),
                       textOf(meter.extremesText)}
        .join(' ');
}

const QMap<QString, std::function<QString(const Arguments &)>> functions{
    {"ArcTan", [](const Arguments &n) { return textOf(ArcTan(n[0], n[1])); }},
    {"sqrt32", [](const Arguments &n) { return textOf(sqrt32(n.texts[0].toLong())); }},
    {"barGroup", [](const Arguments &n) { return textOf(geometry::barGroup(n.area(), n[4])); }},
    {"barLength", [](const Arguments &n) { return textOf(geometry::barLength(n[0], n[1])); }},
    {"bar",
     [](const Arguments &n) {
         return textOf(geometry::bar({30, 200, 350}, n[0], n[1]));
     }},
    {"dial", [](const Arguments &n) { return textOf(geometry::dial(n.area(), n[4])); }},
    {"vectorOf", [](const Arguments &n) { return textOf(geometry::vectorOf(n[0], n[1], n[2])); }},
    {"magnitude",
     [](const Arguments &n) {
         return textOf(geometry::magnitude({n[0], n[1]}));
     }},
    {"needle",
     [](const Arguments &n) {
         return textOf(geometry::needle({n[0], n[1]}, n[2]));
     }},
    {"meter", [](const Arguments &n) { return textOf(geometry::meter(n.area(), n[4])); }},
};

} // namespace

/// Angles, roots and where the parts of the picture lie. The cases are lines of a data file.
class TestIntegerMath : public QObject
{
    Q_OBJECT

private slots:
    void results_data();
    void results();
    void angleOfEveryTangent();
    void rootAroundEverySquare();
};

void TestIntegerMath::results_data()
{
    addColumns<QString, QStringList, QString>("function", "arguments", "result");
    for (const QStringList &line : dataLines(TEST_FOLDER "/arithmetic.txt", 4, 4))
        addRow(qPrintable(line[1] + ": " + line[0]), line[1], line[2].split(' '), line[3]);
}

void TestIntegerMath::results()
{
    QFETCH(QString, function);
    QFETCH(QStringList, arguments);
    QVERIFY(functions.contains(function));
    QTEST(functions[function]({arguments}), "result");
}

/// Each angle is the largest whose tangent is not above the vector's.
void TestIntegerMath::angleOfEveryTangent()
{
    const double unit = std::acos(-1.0) / 4096;
    for (int i = 1; i < 1024; ++i) {
        const int angle = ArcTan(1024, i);
        QVERIFY2(std::tan(angle * unit) <= i / 1024.0, qPrintable(QString::number(i)));
        QVERIFY2(std::tan((angle + 1) * unit) > i / 1024.0, qPrintable(QString::number(i)));
    }
}

void TestIntegerMath::rootAroundEverySquare()
{
    for (long n = 1; n <= 65535; ++n) {
        const QByteArray number = QByteArray::number(static_cast<qlonglong>(n));
        QVERIFY2(sqrt32(n * n - 1) == n - 1, number);
        QVERIFY2(sqrt32(n * n) == n, number);
        QVERIFY2(sqrt32(-(n * n)) == n, number);
    }
}

PADSCOPE_TESTS(TestIntegerMath);
#include "tst_integermath.moc"
