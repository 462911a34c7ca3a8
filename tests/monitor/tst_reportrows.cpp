#include <QTest>

#include "monitor/monitorview.h"
#include "support/datalines.h"
#include "support/tests.h"

/// What the Monitor makes of a report's bytes, blank by blank. The cases are lines of data files.
class ReportRows : public QObject
{
    Q_OBJECT

private slots:
    void rows_data() { addLines(TEST_FOLDER "/rows.txt", 3); }
    void rows();
    void rawForm_data() { addLines(TEST_FOLDER "/rawform.txt", 4); }
    void rawForm();
    void rawFormOfNoBytes();
    void rawFormOfOnlySoManyAsSaid();
    void neverMoreThanThePacketHolds();
    void texts_data() { addLines(TEST_FOLDER "/texts.txt", 3); }
    void texts();

private:
    static void addLines(const char *path, int minParts);
};

void ReportRows::addLines(const char *path, int minParts)
{
    addColumns<QByteArray, QString, QString>("bytes", "text", "label");
    for (const QStringList &line : dataLines(path, minParts, 4)) {
        addRow(qPrintable(line[0]), hex(line[1].toLatin1()), line[2], line.value(3, line[2]));
    }
}

void ReportRows::rows()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.view->AddData("row before", "");
    monitorView.send(bytes);
    QCOMPARE(monitorView.rows(), (QStringList{"row before", text}));
    QTEST(monitorView.label(), "label");
    QCOMPARE(monitorView.view->pendingText, QString());
}

void ReportRows::rawForm()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    MonitorView monitorView;
    monitorView.view->AddData(reinterpret_cast<const unsigned char *>(bytes.constData()),
                              static_cast<unsigned int>(bytes.size()));
    QCOMPARE(monitorView.rows(), QStringList{text});
    QTEST(monitorView.label(), "label");
}

void ReportRows::rawFormOfNoBytes()
{
    MonitorView monitorView;
    monitorView.view->AddData(static_cast<const unsigned char *>(nullptr), 0);
    QCOMPARE(monitorView.rows(), QStringList{""});
    QCOMPARE(monitorView.label(), QString());
}

void ReportRows::rawFormOfOnlySoManyAsSaid()
{
    MonitorView monitorView;
    const unsigned char bytes[] = {0x41, 0x42, 0x43};
    monitorView.view->AddData(bytes, 2);
    QCOMPARE(monitorView.rows(), QStringList{"AB   41 42 "});
}

// The driver library's length may be longer than the bytes that were kept of the report.
void ReportRows::neverMoreThanThePacketHolds()
{
    MonitorView monitorView;
    _DataPacket packet{QByteArray("A!B"), 400, 0, 1001, QTime(12, 0)};
    monitorView.view->Display(&packet);
    QCOMPARE(monitorView.rows(), QStringList{"A!B   41 21 42 "});
}

void ReportRows::texts()
{
    QFETCH(QByteArray, bytes);
    MonitorView monitorView;
    monitorView.send(bytes);
    QCOMPARE(monitorView.rows(), QStringList());
    QTEST(monitorView.view->pendingText, "text");
}

PADSCOPE_TESTS(ReportRows);
#include "tst_reportrows.moc"
