#include <dlfcn.h>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "qorvexgraph.h"
#include "support/tests.h"
#include "support/waitingpackets.h"

/// The simulated board through the tool's own intake, at the settings of a first start.
class SimRows : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theFirstAnswerIsARowOfItsOwn();
    void answersAreRowsOfTheirOwn_data();
    void answersAreRowsOfTheirOwn();

private:
    void type(const char *command);

    void *library = nullptr;
    std::unique_ptr<qorvexgraph> window;
    QStringList rows; ///< every one that came to the Monitor
};

void SimRows::init()
{
    library = dlopen(SIMULATOR_FILE, RTLD_NOW);
    QVERIFY2(library, dlerror());
    window = std::make_unique<qorvexgraph>();
    window->resize(1000, 600);
    window->show();
    window->findChild<QTabWidget *>()->setCurrentIndex(1);
    rows.clear();
    connect(window->findChild<QTreeView *>()->model(), &QAbstractItemModel::dataChanged,
            [this](const QModelIndex &index) { rows += index.data().toString(); });
}

void SimRows::cleanup()
{
    window->close();
    window.reset();
    dlclose(library);
    qunsetenv("ORVEXSIM_SCENARIO");
}

void SimRows::type(const char *command)
{
    auto *line = window->findChild<QLineEdit *>();
    line->setText(command);
    QTest::keyClick(line, Qt::Key_Return);
}

// The command that attaches the tool is sent as soon as the board may greet.
void SimRows::theFirstAnswerIsARowOfItsOwn()
{
    for (int attempt = 0; attempt < 5; ++attempt) {
        type("B");
        QTRY_VERIFY2(rows.contains("[B] streaming!"), qPrintable(rows.join('\n')));
        const auto greeting = rows.indexOf("board 1001 ready!");
        QVERIFY2(greeting >= 0 && greeting < rows.indexOf("[B] streaming!"), qPrintable(rows.join('\n')));
        cleanup();
        init();
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
    type("?");
    QTest::qWait(3000); // until it sends texts of other sorts, too
    for (const char *command : {"U8", ".", ".", "B"})
        type(command);
    for (const char *row : {"[?] commands: . B U8 U0 < > V T ? :RMM :MDU0 :MDP0!", "[U8] frequency locked!",
                            "[.] streaming stopped!", "[.] again: streaming stopped!", "[B] streaming!"})
        QTRY_VERIFY2(rows.contains(row), qPrintable(QString(row) + " is not in\n" + rows.join('\n')));
}

PADSCOPE_TESTS(SimRows);
#include "tst_rows.moc"
