#include "category.h"
#include "support/tests.h"

#include <limits>

class CategoryTest : public QObject
{
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
    void ordersByNumberFirst();
    void ordersEqualNumbersByGroupThenKey();
};

void CategoryTest::parses_data()
{
    addColumns<QString, int, QString, QString>("path", "number", "group", "key");

    addRow("complete", "9/advanced/padscope", 9, "advanced", "padscope");
    addRow("long key", "1/a/b/c", 1, "a", "b/c");
    addRow("negative number", "-3/a/b", -3, "a", "b");
    addRow("no number", "x/a/b", std::numeric_limits<int>::max(), "a", "b");
    addRow("number alone", "4", 4, "other", "");
    addRow("empty group", "4//key", 4, "other", "key");
    addRow("empty", "", std::numeric_limits<int>::max(), "other", "");
}

void CategoryTest::parses()
{
    QFETCH(QString, path);
    const Category category = parseCategory(path);
    QTEST(category.number, "number");
    QTEST(category.group, "group");
    QTEST(category.key, "key");
}

void CategoryTest::ordersByNumberFirst()
{
    const Category two = parseCategory(QStringLiteral("2/z/z"));
    const Category ten = parseCategory(QStringLiteral("10/a/a"));
    QVERIFY(two < ten);
    QVERIFY(!(ten < two));
    QVERIFY(ten < parseCategory(QStringLiteral("last/a/a")));
}

void CategoryTest::ordersEqualNumbersByGroupThenKey()
{
    QVERIFY(parseCategory(QStringLiteral("2/a/z")) < parseCategory(QStringLiteral("2/b/a")));
    QVERIFY(parseCategory(QStringLiteral("2/a/a")) < parseCategory(QStringLiteral("2/a/b")));
    QVERIFY(!(parseCategory(QStringLiteral("2/a/a")) < parseCategory(QStringLiteral("2/a/a"))));
}

PADSCOPE_TESTS(CategoryTest);
#include "tst_category.moc"
