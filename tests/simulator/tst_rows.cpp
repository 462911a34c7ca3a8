#include <dlfcn.h>

#include <QLineEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "datapacket.h"
#include "qorvexgraph.h"
#include "support/tests.h"

namespace {

/// A kind of report, and what its rows look like.
struct Kind
{
    const char *name;
    QRegularExpression row;
};

QVector<Kind> sentKinds()
{
    const auto pattern = [](const char *text) { return QRegularExpression(QLatin1String(text)); };
    return {
        {"signal 1", pattern("^X Fine 0: ")},
        {"signal 2", pattern("^Raw 0: ")},
        {"signal 3", pattern("^Q: Flag ")},
        {"signal 4", pattern("^0: .* Integs: +\\d+$")},
        {"signal 5", pattern("^0: .* Integs: +\\d+ / Norm 0: ")},
        {"signal 6", pattern("^Q: X ")},
        {"phase", pattern("^X Rs 0: .* X Rs Num: ")},
        {"pen identity", pattern("^Q:        .* Pen:        (Teacher|Student|Unknown: \\d+)$")},
        {"dual pen", pattern("^Pen +\\d+: X: ")},
        {"position", pattern("^Q: +\\d+  Px: ")},
        {"signal text line", pattern("^([0-9a-f]{4} ){6}\\*([0-9a-f]{4} ?){6}\\.\\.$")},
        {"unknown", pattern("   ([0-9a-f]{2} +)+$")},
    };
}

/// A window that shows its Monitor, and every row that comes there.
struct Tool
{
    Tool()
    {
        window.resize(1000, 600);
        window.show();
        auto *tabs = window.findChild<QTabWidget *>();
        tabs->setCurrentIndex(tabs->count() - 1);
        const auto *model = window.findChild<QTreeView *>()->model();
        QObject::connect(model, &QAbstractItemModel::dataChanged, &window,
                         [this](const QModelIndex &index) { rows += index.data().toString(); });
    }
    ~Tool()
    {
        window.close();
        // What waits now stays in the window, by design.
        qDeleteAll(window.packetQueue);
    }

    void type(const char *command)
    {
        auto *line = window.findChild<QLineEdit *>();
        line->setText(QLatin1String(command));
        QTest::keyClick(line, Qt::Key_Return);
    }

    qorvexgraph window;
    QStringList rows;
};

} // namespace

/// The simulated board through the tool's own intake, at the settings of a first start.
class SimRows : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyKindShowsWithinHalfAMinute();
    void theFirstAnswerIsARowOfItsOwn();
    void answersAreRowsOfTheirOwn_data();
    void answersAreRowsOfTheirOwn();

private:
    void *library = nullptr;
};

void SimRows::init()
{
    library = dlopen(SIMULATOR_FILE, RTLD_NOW);
    QVERIFY2(library, dlerror());
}

void SimRows::cleanup()
{
    dlclose(library);
    qunsetenv("ORVEXSIM_SCENARIO");
}

void SimRows::everyKindShowsWithinHalfAMinute()
{
    Tool tool;
    tool.type("?");
    QStringList missing;
    const auto allSeen = [&] {
        missing.clear();
        for (const Kind &kind : sentKinds()) {
            if (tool.rows.filter(kind.row).isEmpty())
                missing += QLatin1String(kind.name);
        }
        return missing.isEmpty();
    };
    QVERIFY2(QTest::qWaitFor(allSeen, 30000),
             qPrintable(QStringLiteral("not shown: ") + missing.join(QStringLiteral(", "))));
}

// The command that attaches the tool is sent as soon as the board may greet.
void SimRows::theFirstAnswerIsARowOfItsOwn()
{
    for (int attempt = 0; attempt < 5; ++attempt) {
        Tool tool;
        tool.type("B");
        QTRY_VERIFY2(tool.rows.contains(QLatin1String("[B] streaming!")),
                     qPrintable(tool.rows.join(QLatin1Char('\n'))));
        const auto greeting = tool.rows.indexOf(QLatin1String("board 1001 ready!"));
        QVERIFY2(greeting >= 0 && greeting < tool.rows.indexOf(QLatin1String("[B] streaming!")),
                 qPrintable(tool.rows.join(QLatin1Char('\n'))));
    }
}

void SimRows::answersAreRowsOfTheirOwn_data()
{
    QTest::addColumn<QByteArray>("scenario");
    addRow("one board", QByteArray("default"));
    addRow("two boards", QByteArray("two-pens"));
    addRow("texts among the kinds", QByteArray("all-kinds"));
}

void SimRows::answersAreRowsOfTheirOwn()
{
    QFETCH(QByteArray, scenario);
    qputenv("ORVEXSIM_SCENARIO", scenario);
    Tool tool;
    tool.type("?");
    QTest::qWait(3000); // until it sends texts of other sorts, too
    for (const char *command : {"U8", ".", ".", "B"})
        tool.type(command);
    for (const char *row : {"[?] commands: . B U8 U0 < > V T ? :RMM :MDU0 :MDP0!", "[U8] frequency locked!",
                            "[.] streaming stopped!", "[.] again: streaming stopped!", "[B] streaming!"})
        QTRY_VERIFY2(tool.rows.contains(QLatin1String(row)),
                     qPrintable(QLatin1String(row) + QLatin1String(" is not in\n") +
                                tool.rows.join(QLatin1Char('\n'))));
}

PADSCOPE_TESTS(SimRows);

#include "tst_rows.moc"
