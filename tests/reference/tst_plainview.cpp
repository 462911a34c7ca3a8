#include <functional>
#include <QStyledItemDelegate>
#include <QStyleFactory>
#include <QTimer>
#include <vector>

#include "reference/plainrows.h"
#include "reference/randomuser.h"
#include "reference/reference.h"
#include "support/accesstree.h"
#include "support/listener.h"
#include "support/tests.h"

namespace {

constexpr int stepsOfASeed = 25;
constexpr int rounds = 6; ///< of the event loop, after which a plain view is at rest

enum Rows
{
    OfTheTool,
    Plain
};

void show(ShownWindow &shown, Rows rows)
{
    // Each run begins as if others had gone before: a style leaves its palette behind.
    qApp->setStyleSheet(QString());
    for (const char *style : {"windows", "fusion"})
        QApplication::setStyle(QStyleFactory::create(QLatin1String(style)));
    if (rows == Plain) {
        plainrows::install(shown.view);
        shown.tabs->addTab(shown.view, QStringLiteral("Monitor"));
    }
    shown.show(shown.view, {920, 380});
    QCursor::setPos(2000, 2000);
    shown.settle(rounds);
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

using AddText = std::function<void(const QString &)>;
/// What a host does to the tab, and rows that come meanwhile.
using Script = std::function<void(ShownWindow &shown, const AddText &addRow)>;

void add60(const AddText &addRow)
{
    for (int row = 0; row < 60; ++row)
        addRow(QString::number(row));
}

/// A script that changes a view of 60 rows.
Script after60(const std::function<void(ShownWindow &)> &change)
{
    return [change](ShownWindow &shown, const AddText &addRow) {
        add60(addRow);
        change(shown);
    };
}

Observed runScript(const Script &script, Rows rows)
{
    ShownWindow shown;
    show(shown, rows);
    const RandomUser::AddRow add = adder(rows);
    script(shown, [&](const QString &text) { add(shown.view, text, QString()); });
    const QImage atOnce = shown.window->grab().toImage();
    shown.settle(rounds);
    Observed observed = observe(shown, 1);
    observed.beforeEvents = atOnce;
    return observed;
}

/// As the bus does it for a screen reader: what an event is about at once, all else later.
std::unique_ptr<Listener> newReader()
{
    return std::make_unique<Listener>([](QAccessibleEvent &event) {
        if (const QAccessibleInterface *object = event.accessibleInterface())
            described(*object);
    });
}

void readAll(const ShownWindow &shown)
{
    for (const QAccessibleInterface *object : accessTree(accessOf(shown.window)))
        described(*object);
}

std::vector<Observed> run(quint32 seed, Rows rows, bool isRead = false)
{
    const std::unique_ptr<Listener> reader = isRead ? newReader() : nullptr;
    ShownWindow shown;
    show(shown, rows);
    RandomUser user(shown, seed, adder(rows), [&] {
        if (isRead)
            readAll(shown);
        shown.settle(rounds);
    });
    std::vector<Observed> observed;
    for (int step = 0; step < stepsOfASeed; ++step)
        observed.push_back(user.step());
    return observed;
}

} // namespace

Q_DECLARE_METATYPE(Script)

/// Whatever users, boards and hosts do, the rows are those of a plain tree view: scroll bars, geometry and
/// pixels, after every frame and in every picture that is asked for meanwhile.
class PlainViewTests : public QObject
{
    Q_OBJECT

private slots:
    void init() { QApplication::setCursorFlashTime(0); }
    void scripts_data();
    void scripts();
    void randomUser_data();
    void randomUser();
    void cleanupTestCase();

private:
    int steps = 0;
    int unsteadySteps = 0; ///< in which the plain view differed from itself
};

void PlainViewTests::scripts_data()
{
    QTest::addColumn<Script>("script");
    for (const int count : {5, 10, 15, 20, 30}) {
        QTest::addRow("eleven short rows, then %d wide", count)
            << Script([count](ShownWindow &, const AddText &addRow) {
                   for (int row = 0; row < 11; ++row)
                       addRow(QString::number(row));
                   for (int row = 0; row < count; ++row)
                       addRow(QString(200, QLatin1Char('w')));
               });
    }
    addRow("all rows fit", Script([](ShownWindow &shown, const AddText &addRow) {
               shown.window->resize(480, 1600);
               add60(addRow);
           }));
    addRow("a row changed behind an appended one", after60([](ShownWindow &shown) {
               shown.model->setData(shown.model->index(52, 0), QStringLiteral("changed"));
           }));
    addRow("a first row that grows", after60([](ShownWindow &shown) {
               const QFont large(QStringLiteral("DejaVu Sans"), 30);
               shown.model->setData(shown.model->index(0, 0), large, Qt::FontRole);
           }));
    addRow("an editor from a timer", after60([](ShownWindow &shown) {
               QTreeView *rows = shown.rows();
               QTimer::singleShot(0, rows, [rows] { rows->edit(rows->model()->index(58, 0)); });
           }));
    addRow("an editor from a queued call", after60([](ShownWindow &shown) {
               QTreeView *rows = shown.rows();
               const auto edit = [rows] { rows->edit(rows->model()->index(58, 0)); };
               QMetaObject::invokeMethod(rows, edit, Qt::QueuedConnection);
           }));
    addRow("the host's delegate", Script([](ShownWindow &shown, const AddText &addRow) {
               shown.rows()->setItemDelegate(new UpperCaseDelegate(shown.view));
               add60(addRow);
           }));
}

void PlainViewTests::scripts()
{
    QFETCH(Script, script);
    reference::verifyNone(difference(runScript(script, OfTheTool), runScript(script, Plain)));
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
    // Every other one is read by a screen reader, which changes nothing.
    const std::vector<Observed> actual = run(seed, OfTheTool, seed % 2 == 1);
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
