#include "simulator/steps.h"

#include <QRegularExpression>

#include "simulator/run.h"
#include "support/datalines.h"
#include "support/tests.h"

namespace {

bool holds(const QString &result, const QString &comparison, const QString &expected)
{
    if (comparison == "<")
        return result.toInt() < expected.toInt();
    if (comparison == ">")
        return result.toInt() > expected.toInt();
    return comparison == "^" ? result.startsWith(expected) : result == expected || comparison.isEmpty();
}

} // namespace

void Steps::steps_data()
{
    QTest::addColumn<QStringList>("steps");
    const QByteArray file =
        QByteArray(TEST_FOLDER "/") + QByteArray(metaObject()->className()).mid(4) + ".txt";
    for (const QStringList &line : dataLines(file, 2, 2))
        addRow(qPrintable(line[0]), line[1].split(" & "));
}

void Steps::steps()
{
    static const QRegularExpression form(
        "^(?<word>\\S+)(?: (?<values>[^=^<>].*?))?(?: (?<comparison>[=^<>])(?: (?<expected>.*))?)?$");
    QFETCH(QStringList, steps);
    Run run;
    for (const QString &step : steps) {
        const auto parts = form.match(step);
        const auto word = words().find(parts.captured("word"));
        QVERIFY2(word != words().end(), qPrintable(step));
        QString result;
        const auto isAsExpected = [&] {
            result = word->second.result(run, parts.captured("values").split(' '));
            return holds(result, parts.captured("comparison"), parts.captured("expected"));
        };
        const bool passed = word->second.looks ? QTest::qWaitFor(isAsExpected, 10000) : isAsExpected();
        QVERIFY2(passed, qPrintable(step + ", but it was " + result));
    }
}
