#include "category.h"
#include "support/testmain.h"

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
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");

    QTest::newRow("complete") << "9/advanced/padscope" << 9 << "advanced"
                              << "padscope";
    QTest::newRow("long key") << "1/a/b/c" << 1 << "a"
                              << "b/c";
    QTest::newRow("negative number") << "-3/a/b" << -3 << "a"
                                     << "b";
    QTest::newRow("no number") << "x/a/b" << std::numeric_limits<int>::max() << "a"
                               << "b";
    QTest::newRow("number alone") << "4" << 4 << "other"
                                  << "";
    QTest::newRow("empty group") << "4//key" << 4 << "other"
                                 << "key";
    QTest::newRow("empty") << "" << std::numeric_limits<int>::max() << "other"
                           << "";
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

PADSCOPE_TEST_MAIN(CategoryTest)
#include "tst_category.moc"
