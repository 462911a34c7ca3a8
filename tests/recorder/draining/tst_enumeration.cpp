#include "enumeration.h"
#include "support/tests.h"

using recorder::Enumeration;

namespace {

/// The library's record, of which the id counts, and one more byte.
std::string recordOf(char board, char more)
{
    std::string record(840, '\0');
    record[20] = board;
    record[30] = more;
    return record;
}

QStringList textsOf(const std::vector<Enumeration::Change> &changes)
{
    QStringList texts;
    for (const Enumeration::Change &change : changes)
        texts +=
            QString("%1 %2 at %3").arg(change.isGone ? "gone" : "seen").arg(change.board).arg(change.index);
    return texts;
}

} // namespace

class EnumerationTests : public QObject
{
    Q_OBJECT

private slots:
    void boardsWithEqualIdsAreToldOnce();
    void aNewPlaceIsTold();
};

void EnumerationTests::boardsWithEqualIdsAreToldOnce()
{
    Enumeration enumeration;
    enumeration.countReturned(2);
    QCOMPARE(textsOf(enumeration.recordReturned(0, recordOf(7, 'a'))), QStringList{"seen 7 at 0"});
    QCOMPARE(textsOf(enumeration.recordReturned(1, recordOf(7, 'b'))), QStringList{"seen 7 at 1"});
    enumeration.countReturned(2);
    QCOMPARE(textsOf(enumeration.recordReturned(0, recordOf(7, 'a'))), QStringList());
    QCOMPARE(textsOf(enumeration.recordReturned(1, recordOf(7, 'b'))), QStringList());
}

void EnumerationTests::aNewPlaceIsTold()
{
    Enumeration enumeration;
    enumeration.countReturned(2);
    enumeration.recordReturned(0, recordOf(7, 'a'));
    enumeration.recordReturned(1, recordOf(8, 'a'));
    enumeration.countReturned(1);
    QCOMPARE(textsOf(enumeration.recordReturned(0, recordOf(8, 'a'))),
             (QStringList{"seen 8 at 0", "gone 7 at -1"}));
    enumeration.countReturned(2);
    QCOMPARE(textsOf(enumeration.recordReturned(0, recordOf(8, 'a'))), QStringList());
    QCOMPARE(textsOf(enumeration.recordReturned(1, recordOf(7, 'a'))), QStringList{"seen 7 at 1"});
}

PADSCOPE_TESTS(EnumerationTests);
#include "tst_enumeration.moc"
