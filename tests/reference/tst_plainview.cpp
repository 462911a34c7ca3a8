#include "reference/plainrows.h"
#include "reference/randomuser.h"
#include "reference/reference.h"
#include "support/tests.h"

#include <functional>
#include <vector>

#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QStyleFactory>
#include <QTimer>
#include <QTreeView>

/// Whatever users, boards and hosts do, the rows are those of a plain tree view: scroll bars, geometry and
/// pixels, after every frame and in every picture that is asked for meanwhile.
class PlainViewTests : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void scripts_data();
    void scripts();
    void randomUser_data();
    void randomUser();
    void cleanupTestCase();

private:
    int steps = 0;
    int unsteadySteps = 0; ///< in which the plain view differed from itself
};

namespace {

constexpr int stepsOfASeed = 25;

enum Rows
{
    OfTheTool,
    Plain
};

void settle(ShownWindow &shown, Rows rows)
{
    if (rows == OfTheTool && !shown.waitForFrame())
        qFatal("the frame does not end");
    for (int i = 0; i < 6; ++i)
        QCoreApplication::processEvents();
}

void show(ShownWindow &shown, Rows rows)
{
    // Each run begins as if others had gone before: a style leaves its palette behind.
    qApp->setStyleSheet(QString());
    for (const char *style : {"windows", "fusion"})
        QApplication::setStyle(QStyleFactory::create(QLatin1String(style)));
    shown.window->commandLine->setEnabled(false); // no cursor that blinks
    if (rows == Plain) {
        plainrows::install(shown.view);
        shown.window->tabs->addTab(shown.view, QStringLiteral("Monitor"));
    }
    shown.show(shown.view, {920, 380});
    QCursor::setPos(2000, 2000);
    settle(shown, rows);
}

RandomUser::AddRow adder(Rows rows)
{
    if (rows == Plain)
        return plainrows::add;
    return [](monitor *view, const QString &first, const QString &second) { view->AddData(first, second); };
}

class UpperCaseDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &locale) const override
    {
        return locale.toUpper(value.toString()) + QLatin1Char('!');
    }
};

/// What a host does to the tab, and rows that come meanwhile.
using Script = std::function<void(ShownWindow &shown, const std::function<void(const QString &)> &addRow)>;

Observed runScript(const Script &script, Rows rows)
{
    ShownWindow shown;
    show(shown, rows);
    const RandomUser::AddRow add = adder(rows);
    script(shown, [&](const QString &text) { add(shown.view, text, QString()); });
    const QImage atOnce = shown.window->grab().toImage();
    settle(shown, rows);
    Observed observed = observe(shown, 1);
    observed.beforeEvents = atOnce;
    return observed;
}

std::vector<Observed> run(quint32 seed, Rows rows)
{
    ShownWindow shown;
    show(shown, rows);
    RandomUser user(shown, seed, adder(rows), [&shown, rows] { settle(shown, rows); });
    std::vector<Observed> observed;
    for (int step = 0; step < stepsOfASeed; ++step)
        observed.push_back(user.step());
    return observed;
}

} // namespace

Q_DECLARE_METATYPE(Script)

void PlainViewTests::init()
{
    QApplication::setCursorFlashTime(0);
}

void PlainViewTests::scripts_data()
{
    QTest::addColumn<Script>("script");
    const QString wide(200, QLatin1Char('w'));
    for (const int count : {5, 10, 15, 20, 30}) {
        QTest::addRow("eleven short rows, then %d wide", count)
            << Script([wide, count](auto &, auto &addRow) {
                   for (int row = 0; row < 11; ++row)
                       addRow(QString::number(row));
                   for (int row = 0; row < count; ++row)
                       addRow(wide);
               });
    }
    const auto add60 = [](auto &addRow) {
        for (int row = 0; row < 60; ++row)
            addRow(QString::number(row));
    };
    QTest::newRow("many rows") << Script([=](auto &, auto &addRow) { add60(addRow); });
    QTest::newRow("a row changed behind an appended one") << Script([=](auto &shown, auto &addRow) {
        add60(addRow);
        shown.view->model->setData(shown.view->model->index(52, 0), QStringLiteral("changed"));
    });
    QTest::newRow("a first row that grows") << Script([=](auto &shown, auto &addRow) {
        add60(addRow);
        shown.view->model->setData(shown.view->model->index(0, 0), QFont(QStringLiteral("DejaVu Sans"), 30),
                                   Qt::FontRole);
    });
    QTest::newRow("an editor from a timer") << Script([=](auto &shown, auto &addRow) {
        add60(addRow);
        QTreeView *rows = shown.view->treeView;
        QTimer::singleShot(0, rows, [rows] { rows->edit(rows->model()->index(58, 0)); });
    });
    QTest::newRow("an editor from a queued call") << Script([=](auto &shown, auto &addRow) {
        add60(addRow);
        QTreeView *rows = shown.view->treeView;
        QMetaObject::invokeMethod(
            rows, [rows] { rows->edit(rows->model()->index(58, 0)); }, Qt::QueuedConnection);
    });
    QTest::newRow("items with roles") << Script([=](auto &shown, auto &addRow) {
        add60(addRow);
        QAbstractItemModel *model = shown.view->model;
        model->setData(model->index(59, 0), QFont(QStringLiteral("DejaVu Serif"), 9), Qt::FontRole);
        model->setData(model->index(58, 0), QColor(Qt::red), Qt::ForegroundRole);
        model->setData(model->index(57, 0), QColor(Qt::blue), Qt::BackgroundRole);
        model->setData(model->index(56, 0), Qt::Checked, Qt::CheckStateRole);
    });
    QTest::newRow("alternating colours") << Script([=](auto &shown, auto &addRow) {
        shown.view->treeView->setAlternatingRowColors(true);
        add60(addRow);
    });
    QTest::newRow("the host's delegate") << Script([=](auto &shown, auto &addRow) {
        shown.view->treeView->setItemDelegate(new UpperCaseDelegate(shown.view));
        add60(addRow);
    });
    QTest::newRow("item rules on the tab") << Script([=](auto &shown, auto &addRow) {
        shown.view->setStyleSheet(shown.view->styleSheet() + " QTreeView::item {color: red; padding: 4px;}");
        add60(addRow);
    });
}

void PlainViewTests::scripts()
{
    QFETCH(Script, script);
    const QString different = difference(runScript(script, OfTheTool), runScript(script, Plain));
    QVERIFY2(different.isEmpty(), qPrintable(different));
}

void PlainViewTests::randomUser_data()
{
    QTest::addColumn<quint32>("seed");
    const quint32 first = qEnvironmentVariableIntValue("PADSCOPE_SEED");
    const int count =
        qEnvironmentVariableIsSet("PADSCOPE_SEEDS") ? qEnvironmentVariableIntValue("PADSCOPE_SEEDS") : 8;
    for (quint32 seed = first; seed < first + quint32(count); ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void PlainViewTests::randomUser()
{
    QFETCH(quint32, seed);
    const std::vector<Observed> expected = run(seed, Plain);
    const std::vector<Observed> again = run(seed, Plain);
    const std::vector<Observed> actual = run(seed, OfTheTool);
    QString done;
    for (std::size_t step = 0; step < expected.size(); ++step) {
        done += QStringLiteral("\n  ") + expected[step].action;
        ++steps;
        if (!difference(again[step], expected[step]).isEmpty()) {
            ++unsteadySteps;
            continue;
        }
        const QString different = difference(actual[step], expected[step]);
        QVERIFY2(different.isEmpty(), qPrintable(different + QStringLiteral("\nafter") + done));
    }
}

void PlainViewTests::cleanupTestCase()
{
    qInfo("%d of %d steps did not count: the plain view differed from itself", unsteadySteps, steps);
    QVERIFY(unsteadySteps * 4 < steps);
}

PADSCOPE_TESTS(PlainViewTests);
#include "tst_plainview.moc"
