#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "program.h"
#include "support/tests.h"

namespace {

/// What a browser did with a page.
struct Visit
{
    QByteArray document; ///< as it stands behind loading
    QByteArray console;
    QStringList requests;
    QImage picture;
};

QStringList requestsIn(const QByteArray &netLog)
{
    QStringList urls;
    const QJsonArray events = QJsonDocument::fromJson(netLog).object()[QStringLiteral("events")].toArray();
    if (events.isEmpty())
        qFatal("no net log");
    for (const QJsonValue &event : events) {
        const QString url = event[QStringLiteral("params")][QStringLiteral("url")].toString();
        if (!url.isEmpty())
            urls += url;
    }
    return urls;
}

ProgramRun browse(const QStringList &options, const QString &page)
{
    // In a container there may be no other user, and no sandbox.
    const QStringList always{QStringLiteral("--no-sandbox"), QStringLiteral("--enable-logging=stderr"),
                             QStringLiteral("--window-size=1000,14000")};
    const ProgramRun run = runProgram(QStringLiteral("chromium-headless-shell"),
                                      always + options + QStringList{QStringLiteral("file://") + page});
    if (run.status != 0)
        qFatal("chromium-headless-shell is needed: packaging/install-packages browser\n%s",
               run.errors.constData());
    return run;
}

QByteArray consoleOf(const ProgramRun &run)
{
    QByteArray lines;
    for (const QByteArray &line : run.errors.split('\n')) {
        if (line.contains("CONSOLE"))
            lines += line + '\n';
    }
    return lines;
}

/// Each colour of a curve that the picture has, by its pixels.
int pixelsOf(const QImage &picture, QRgb color)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixel(x, y) == color ? 1 : 0;
    }
    return count;
}

} // namespace

/// The page in a real browser.
class BrowserTests : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void page();
    void violationsAreSeen();
    void requestsAreSeen();

private:
    Visit visit(const QString &page) const;

    const Files files;
    QByteArray written;
};

void BrowserTests::initTestCase()
{
    const QString output = files.path("page.html");
    QCOMPARE(padscope({"report", EXAMPLE_CAPTURE, "-o", output}).status, 0);
    written = Files::read(output);
    QVERIFY(!written.isEmpty());
}

Visit BrowserTests::visit(const QString &page) const
{
    Visit visit;
    const QString netLog = files.path("net.json");
    const ProgramRun run =
        browse({QStringLiteral("--dump-dom"), QStringLiteral("--log-net-log=") + netLog}, page);
    visit.document = run.output;
    visit.console = consoleOf(run);
    visit.requests = requestsIn(Files::read(netLog));
    const QString picture = files.path("page.png");
    visit.console += consoleOf(browse({QStringLiteral("--screenshot=") + picture}, page));
    visit.picture = QImage(picture);
    return visit;
}

/// Nothing is logged, nothing is asked for, and all of it is there.
void BrowserTests::page()
{
    const Visit seen = visit(files.path("page.html"));
    QCOMPARE(seen.console, QByteArray());
    QCOMPARE(seen.requests, QStringList());
    for (const char *heading :
         {"<h3>Overview</h3>", "<h3>Boards</h3>", "<h3>Calls that failed</h3>",
          "<h3>Calls that never returned</h3>", "<h3>Marks</h3>", "<h3>Board 1001</h3>",
          "<h4>The pen's path</h4>", "<h4>Signals</h4>", "<h4>Quality</h4>", "<h4>Voltage</h4>",
          "<h4>Rates and jitter</h4>", "<h3>Losses</h3>", "<h3>Statistics</h3>"})
        QVERIFY2(seen.document.contains(heading), heading);
    QCOMPARE(seen.document.count("<svg "), 24);
    QCOMPARE(seen.picture.width(), 1000);
    // The first three curves' colours are those of all pictures with phases.
    for (const QRgb color : {0xFF0072B2, 0xFFD55E00, 0xFF009E73})
        QVERIFY(pixelsOf(seen.picture, color) > 1000);
}

/// The page forbids what was not meant to be in it, and the browser says so.
void BrowserTests::violationsAreSeen()
{
    QByteArray changed = written;
    changed.replace("</body>",
                    "<script>document.title = 1</script><img src=\"http://127.0.0.1:9/x\"></body>");
    const Visit seen = visit(files.write("changed.html", changed));
    QVERIFY(seen.console.contains("script"));
    QVERIFY(seen.console.contains("http://127.0.0.1:9/x"));
    QCOMPARE(seen.requests, QStringList());
}

void BrowserTests::requestsAreSeen()
{
    const Visit seen =
        visit(files.write("loads.html", "<html><body><img src=\"http://127.0.0.1:9/x\"></body></html>"));
    QVERIFY(seen.requests.contains(QStringLiteral("http://127.0.0.1:9/x")));
}

PADSCOPE_TESTS(BrowserTests);
#include "tst_browser.moc"
