#include <limits>

#include "category.h"
#include "support/tests.h"

class CategoryTest : public QObject
{
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
    void orders_data();
    void orders();
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

void CategoryTest::orders_data()
{
    addColumns<QString, QString, bool>("first", "second", "isLess");
    addRow("by the number", "2/z/z", "10/a/a", true);
    addRow("by the number, backwards", "10/a/a", "2/z/z", false);
    addRow("no number last", "10/a/a", "last/a/a", true);
    addRow("then by the group", "2/a/z", "2/b/a", true);
    addRow("then by the key", "2/a/a", "2/a/b", true);
    addRow("equal", "2/a/a", "2/a/a", false);
}

void CategoryTest::orders()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QTEST(parseCategory(first) < parseCategory(second), "isLess");
}

PADSCOPE_TESTS(CategoryTest);
#include "tst_category.moc"
