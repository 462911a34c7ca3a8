#include <dlfcn.h>

#include <QLineEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "mainwindow/datapacket.h"
#include "mainwindow/qorvexgraph.h"
#include "tests/support/testmain.h"

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

} // namespace

/// The simulated board through the tool's own intake, at the settings of a first start.
class SimRows : public QObject
{
    Q_OBJECT

private slots:
    void everyKindShowsWithinHalfAMinute();
};

void SimRows::everyKindShowsWithinHalfAMinute()
{
    void *library = dlopen(SIMULATOR_FILE, RTLD_NOW);
    QVERIFY2(library, dlerror());
    {
        qorvexgraph window;
        window.resize(1000, 600);
        window.show();
        QVector<Kind> missing = sentKinds();
        auto *view = window.findChild<QTreeView *>();
        connect(view->model(), &QAbstractItemModel::dataChanged, this, [&](const QModelIndex &index) {
            const QString row = index.data().toString();
            for (int i = missing.size() - 1; i >= 0; --i) {
                if (missing[i].row.match(row).hasMatch())
                    missing.remove(i);
            }
        });
        auto *tabs = window.findChild<QTabWidget *>();
        tabs->setCurrentIndex(tabs->count() - 1);
        QTest::keyClicks(window.findChild<QLineEdit *>(), QStringLiteral("?"));
        QTest::keyClick(window.findChild<QLineEdit *>(), Qt::Key_Return);
        const bool allSeen = QTest::qWaitFor([&] { return missing.isEmpty(); }, 30000);
        QStringList names;
        for (const Kind &kind : missing)
            names += QLatin1String(kind.name);
        QVERIFY2(allSeen, qPrintable(QStringLiteral("not shown: ") + names.join(QStringLiteral(", "))));
        window.close();
        // What waits now stays in the window, by design.
        qDeleteAll(window.packetQueue);
    }
    dlclose(library);
}

PADSCOPE_TEST_MAIN(SimRows)

#include "tst_rows.moc"
