#include <QImage>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include "program.h"
#include "support/tests.h"

using examplecapture::start;
using examplecapture::whole;

/// `padscope plot`, and what it has in common with `padscope report`, as a process.
class PlotProgramTests : public QObject
{
    Q_OBJECT

private slots:
    void svg_data();
    void svg();
    void titles();
    void png();
    void pdf();
    void standardInput();
    void wrongArguments_data();
    void wrongArguments();
    void badCaptures_data();
    void badCaptures();
    void incompleteCaptures();
    void overwritesNothing();
    void noRoom();
    void limitOfFileSizes();
    void permissions();
    void tooHigh();

private:
    const Files files;
};

void PlotProgramTests::svg_data()
{
    addColumns<QString, int, QStringList>("what", "pictures", "texts");
    addRow("path", QString("path"), 1, QStringList{"X (board units)", "Y (board units)", "pen"});
    addRow("signals", QString("signals"), 15, QStringList{"Signal (counts)", "Frequency (Hz)", "120°"});
    addRow("quality", QString("quality"), 5, QStringList{"Quality (counts)", "average"});
    addRow("voltage", QString("voltage"), 1, QStringList{"Voltage (V)", "Time (s)"});
    addRow("rates", QString("rates"), 2,
           QStringList{"Reports a second (1/s)", "Time between (ms)",
                       "Board 1001: jitter, the time from one report of a type to the next"});
}

void PlotProgramTests::svg()
{
    QFETCH(QString, what);
    QFETCH(int, pictures);
    QFETCH(QStringList, texts);
    const QString output = files.path(qPrintable(what + ".svg"));
    const ProgramRun run = padscope({"plot", EXAMPLE_CAPTURE, "--what", what, "-o", output});
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
    QXmlStreamReader reader(Files::read(output));
    QStringList found;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QStringLiteral("text"))
            found += reader.readElementText();
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QCOMPARE(found.filter(QRegularExpression("^Board 1001: ")).size(), pictures);
    for (const QString &text : texts)
        QVERIFY2(found.contains(text), qPrintable(text));
}

/// Of a file whose name is no markup.
void PlotProgramTests::titles()
{
    const QString file = files.write("R&D <b>\"\x1b.pcapng", Files::read(EXAMPLE_CAPTURE));
    const QString output = files.path("title.svg");
    QCOMPARE(padscope({"plot", file, "--what", "path", "-o", output}).status, 0);
    QXmlStreamReader reader(Files::read(output));
    QString title;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QStringLiteral("title"))
            title += reader.readElementText();
    }
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
    QCOMPARE(title, QString("path of R&D <b>\"\\x1b.pcapng"));
}

/// The pixels of the curves, in their colours.
void PlotProgramTests::png()
{
    const QString output = files.path("voltage.png");
    QCOMPARE(padscope({"plot", EXAMPLE_CAPTURE, "--what", "voltage", "-o", output}).status, 0);
    const QImage image(output);
    QCOMPARE(image.size(), QSize(2 * 930, 2 * (28 + 18 + 4 + 200 + 50)));
    QCOMPARE(image.pixel(0, 0), 0xFFFFFFFF);
    int blue = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            blue += image.pixel(x, y) == 0xFF0072B2 ? 1 : 0;
    }
    QVERIFY(blue > 500);
}

void PlotProgramTests::pdf()
{
    const QString output = files.path("signals.pdf");
    QCOMPARE(padscope({"plot", EXAMPLE_CAPTURE, "--what", "signals", "-o", output}).status, 0);
    const QByteArray bytes = Files::read(output);
    QVERIFY(bytes.startsWith("%PDF-"));
    QVERIFY(bytes.trimmed().endsWith("%%EOF"));
    QVERIFY(bytes.contains("DejaVuSans"));
    QVERIFY(bytes.contains("/Count 4")); // 15 pictures, four a page
}

void PlotProgramTests::standardInput()
{
    const QString output = files.path("input.svg");
    const QByteArray capture = Files::read(EXAMPLE_CAPTURE);
    QCOMPARE(padscope({"plot", "-", "--what", "path", "-o", output}, capture).status, 0);
    const QString other = files.path("file.svg");
    QCOMPARE(padscope({"plot", EXAMPLE_CAPTURE, "--what", "path", "-o", other}).status, 0);
    const auto drawing = [](const QString &path) {
        return Files::read(path).mid(Files::read(path).indexOf("<g"));
    };
    QVERIFY(drawing(output).size() > 1000);
    QCOMPARE(drawing(output), drawing(other));
}

void PlotProgramTests::wrongArguments_data()
{
    addColumns<QStringList, QByteArray>("arguments", "line");
    const QString file = EXAMPLE_CAPTURE;
    addRow("an extension", QStringList{"plot", file, "--what", "path", "-o", "/tmp/x.gif"},
           QByteArray("padscope: --output: /tmp/x.gif ends in none of .svg, .png, .pdf; see --help\n"));
    addRow("no page", QStringList{"report", file, "-o", "/tmp/x.svg"},
           QByteArray("padscope: --output: /tmp/x.svg ends in none of .html; see --help\n"));
    addRow(
        "what", QStringList{"plot", file, "--what", "ink", "-o", "/tmp/x.svg"},
        QByteArray("padscope: --what: ink is none of path, signals, quality, voltage, rates; see --help\n"));
    addRow("no output", QStringList{"report", file},
           QByteArray("padscope: --output is required; see --help\n"));
    addRow("no file", QStringList{"report", "-o", "/tmp/x.html"},
           QByteArray("padscope: FILE is required; see --help\n"));
}

void PlotProgramTests::wrongArguments()
{
    QFETCH(QStringList, arguments);
    const ProgramRun run = padscope(arguments);
    QTEST(run.errors, "line");
    QCOMPARE(run.status, 2);
}

void PlotProgramTests::badCaptures_data()
{
    addColumns<QByteArray, QByteArray>("bytes", "reason");
    addRow("empty", QByteArray(), QByteArray("byte 0: it is empty"));
    addRow("no capture", QByteArray("hello, world"),
           QByteArray("byte 0: no pcapng file: it does not begin with a section header"));
    addRow("no packets", start(), QByteArray("no packet of a capture in it"));
    addRow("zeros behind", whole() + QByteArray(64, '\0'),
           "byte " + QByteArray::number(whole().size()) + ": a block length of 0");
}

/// One line, and nothing is written.
void PlotProgramTests::badCaptures()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, reason);
    const QString page = files.path("bad.html");
    const QString picture = files.path("bad.svg");
    for (const QStringList &arguments : {QStringList{"report", "-", "-o", page},
                                         QStringList{"plot", "-", "--what", "rates", "-o", picture}}) {
        const ProgramRun run = padscope(arguments, bytes);
        QCOMPARE(run.errors, "padscope: standard input: " + reason + '\n');
        QCOMPARE(run.status, 2);
    }
    QVERIFY(!QFile::exists(page));
    QVERIFY(!QFile::exists(picture));
}

void PlotProgramTests::incompleteCaptures()
{
    const QString page = files.path("cut.html");
    const ProgramRun run = padscope({"report", "-", "-o", page}, whole().chopped(1));
    QVERIFY(run.errors.endsWith(": it ends within a block\n"));
    QCOMPARE(run.status, 3);
    QVERIFY(Files::read(page).contains("<td>cut off</td>"));
    const ProgramRun none =
        padscope({"plot", "-", "--what", "voltage", "-o", files.path("none.svg")}, whole());
    QCOMPARE(none.errors, QByteArray("padscope: standard input: no voltage in it\n"));
    QCOMPARE(none.status, 1);
    QVERIFY(!QFile::exists(files.path("none.svg")));
}

void PlotProgramTests::overwritesNothing()
{
    const QString page = files.write("mine.html", "mine");
    const ProgramRun run = padscope({"report", EXAMPLE_CAPTURE, "-o", page});
    QCOMPARE(run.errors,
             "padscope: --output: " + page.toUtf8() + " exists, and is not overwritten; see --help\n");
    QCOMPARE(run.status, 2);
    QCOMPARE(Files::read(page), QByteArray("mine"));
}

void PlotProgramTests::noRoom()
{
    const ProgramRun run = padscope({"report", EXAMPLE_CAPTURE, "-o", "/proc/x.html"});
    QCOMPARE(run.errors.count('\n'), 1);
    QVERIFY(run.errors.startsWith("padscope: /proc/x.html: "));
    QCOMPARE(run.status, 1);
}

/// Of files above 51,200 bytes.
void PlotProgramTests::limitOfFileSizes()
{
    const Files folder;
    const QString page = folder.path("page.html");
    const QString picture = folder.path("picture.png");
    for (const QString &command :
         {"report " EXAMPLE_CAPTURE " -o " + page, "plot " EXAMPLE_CAPTURE " --what signals -o " + picture}) {
        const ProgramRun run = runProgram(
            "/bin/sh", {"-c", "ulimit -f 100; exec \"$0\" " + command, QStringLiteral(PADSCOPE_PROGRAM)});
        const QString output = command.startsWith("report") ? page : picture;
        QCOMPARE(QString(run.errors), "padscope: " + output + ": File too large\n");
        QCOMPARE(run.status, 1);
        QCOMPARE(folder.names(), QStringList());
    }
}

/// They show handwriting: nobody else reads them.
void PlotProgramTests::permissions()
{
    const QString page = files.path("permissions.html");
    QCOMPARE(padscope({"report", EXAMPLE_CAPTURE, "-o", page}).status, 0);
    QCOMPARE(QFile::permissions(page),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
}

/// Rates and jitter of 32 boards are 64 pictures of 600 pixels.
void PlotProgramTests::tooHigh()
{
    QByteArray bytes = start();
    for (quint64 i = 0; i < 64; ++i)
        bytes += blocks::packet(1 + i * 10'000'000, packetBytes(1, 1, 0, int(i % 32), 0, "x", 1, 0, i));
    const QString output = files.path("high.png");
    const QString capture = files.write("high", bytes);
    const ProgramRun run = padscope({"plot", capture, "--what", "rates", "-o", output});
    QCOMPARE(run.errors, "padscope: " + output.toUtf8() +
                             ": 64 pictures are too high for a PNG; .svg and .pdf have room\n");
    QCOMPARE(run.status, 1);
    QVERIFY(!QFile::exists(output));
    QCOMPARE(padscope({"plot", capture, "--what", "rates", "-o", files.path("high.svg")}).status, 3);
}

PADSCOPE_TESTS(PlotProgramTests);
#include "tst_plotprogram.moc"
