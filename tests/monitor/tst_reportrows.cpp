#include "monitor/monitortest.h"
#include "support/datalines.h"

/// What the Monitor makes of a report's bytes, blank by blank. The cases are lines of data files.
class ReportRows : public MonitorTest
{
    Q_OBJECT

private slots:
    void decoded_data() { addLines(TEST_FOLDER "/rows.txt", 3); }
    void decoded();
    void rawForm_data() { addLines(TEST_FOLDER "/rawform.txt", 4); }
    void rawForm();
    void rawFormOfAsManyAsSaid();
    void neverMoreThanThePacketHolds();
    void texts_data() { addLines(TEST_FOLDER "/texts.txt", 3); }
    void texts();
    void everyTypeAtLengthsZeroToTwo();

private:
    static void addLines(const char *path, int minParts);
};

void ReportRows::addLines(const char *path, int minParts)
{
    addColumns<QByteArray, QString, QString>("bytes", "text", "label");
    for (const QStringList &line : dataLines(path, minParts, 4))
        addRow(qPrintable(line[0]), hex(line[1].toLatin1()), line[2], line.value(3, line[2]));
}

void ReportRows::decoded()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    add("row before");
    send(bytes);
    QCOMPARE(rows(), (QStringList{"row before", text}));
    QTEST(lastRow->text(), "label");
    QCOMPARE(pendingText(), QString());
}

void ReportRows::rawForm()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    view->AddData(reinterpret_cast<const unsigned char *>(bytes.constData()),
                  static_cast<unsigned int>(bytes.size()));
    QCOMPARE(rows(), QStringList{text});
    QTEST(lastRow->text(), "label");
}

void ReportRows::rawFormOfAsManyAsSaid()
{
    const unsigned char bytes[] = {0x41, 0x42, 0x43};
    view->AddData(bytes, 2);
    view->AddData(static_cast<const unsigned char *>(nullptr), 0);
    QCOMPARE(rows(), (QStringList{"AB   41 42 ", ""}));
    QCOMPARE(lastRow->text(), QString());
}

// The driver library's length may be longer than the bytes that were kept of the report.
void ReportRows::neverMoreThanThePacketHolds()
{
    _DataPacket packet{QByteArray("A!B"), 400, 0, 1001, noon};
    view->Display(&packet);
    QCOMPARE(rows(), QStringList{"A!B   41 21 42 "});
}

void ReportRows::texts()
{
    QFETCH(QByteArray, bytes);
    send(bytes);
    QCOMPARE(rows(), QStringList());
    QTEST(pendingText(), "text");
}

void ReportRows::everyTypeAtLengthsZeroToTwo()
{
    for (int type = 0; type < 256; ++type) {
        const char report[] = {40, static_cast<char>(type)};
        for (int length = 0; length <= 2; ++length) {
            send(QByteArray(report, length));
            // No checksum of 16 bits: the next report is none that repeats this one.
            Inspect::previousPacket(*view)->checksum = 0x10000;
        }
        // Text of two bytes holds no character; everything else makes a row.
        const bool isText = type == 50 || type == 119;
        QCOMPARE(model->rowCount(), isText ? 2 : 3);
        QCOMPARE(rows().mid(0, 2), (QStringList{"", "(   28 "}));
        QVERIFY(pendingText().isEmpty());
        model->removeRows(0, model->rowCount());
    }
}

PADSCOPE_TESTS(ReportRows);
#include "tst_reportrows.moc"
