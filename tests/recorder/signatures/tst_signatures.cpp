#include "signatures.h"
#include "support/tests.h"

namespace {

/// "device=7 length=2 data=6162"
QString textOf(const std::vector<signatures::Value> &values)
{
    QStringList texts;
    for (const signatures::Value &value : values) {
        const QString name = QString::fromStdString(value.argument->name) + '=';
        const QByteArray bytes(reinterpret_cast<const char *>(value.bytes.data), int(value.bytes.size));
        if (value.isNull)
            texts += name + "null";
        else if (value.bytes.size > 0)
            texts += name + bytes.toHex();
        else
            texts += name + QString::number(value.number);
    }
    return texts.join(' ');
}

capture::ByteView viewOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const unsigned char *>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

} // namespace

class SignatureTests : public QObject
{
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void values_data();
    void values();
};

/// They are frozen: captures have them.
void SignatureTests::numbers_data()
{
    addColumns<int, QByteArray, bool, bool>("call", "name", "hasResult", "hasBoard");
    addRow("first", 1, QByteArray("orvexAttach"), true, false);
    addRow("8", 8, QByteArray("orvexSetXferMask"), false, true);
    addRow("9", 9, QByteArray("orvexGetDeviceCount"), true, false);
    addRow("10", 10, QByteArray("orvexEnumDeviceInfo"), true, false);
    addRow("15", 15, QByteArray("orvexOpenSynchronousChannel"), true, true);
    addRow("33", 33, QByteArray("orvexEcho"), false, true);
    addRow("last", 47, QByteArray("orvexReverseButtons"), false, true);
}

void SignatureTests::numbers()
{
    QFETCH(int, call);
    const signatures::Signature *signature = signatures::signatureOf(unsigned(call));
    QVERIFY(signature);
    QTEST(QByteArray::fromStdString(signature->name), "name");
    QTEST(signature->hasResult, "hasResult");
    QTEST(signature->hasBoard, "hasBoard");
    QVERIFY(!signatures::signatureOf(0));
    QVERIFY(!signatures::signatureOf(48));
}

void SignatureTests::values_data()
{
    addColumns<int, QByteArray, QString, QString>("call", "payload", "arguments", "filledIn");
    addRow("a text", 6, QByteArray("07000000020000003f0d"), QString("device=7 command=3f0d"), QString());
    addRow("a null text", 6, QByteArray("07000000ffffffff"), QString("device=7 command=null"), QString());
    addRow("a text that is cut", 6, QByteArray("07000000090000003f0d"), QString("device=7 command=3f0d"),
           QString());
    addRow("a byte and a mask", 32, QByteArray("0700000004000000ffffffff"),
           QString("device=7 mode=4 mask=4294967295"), QString());
    addRow("a listener", 4, QByteArray("0700000003000000"), QString("device=7 callback=3"), QString());
    addRow("bytes", 33, QByteArray("0700000002000000020000006162"), QString("device=7 length=2 data=6162"),
           QString());
    addRow("what is not read", 20, QByteArray("070000000100000002000000"), QString("device=7 set=1 kind=2"),
           QString());
    addRow("two numbers", 21, QByteArray("fbffffff04000000"), QString("device=-5"),
           QString("columns=-5 rows=4"));
    addRow("a record", 10, QByteArray("0600000000"), QString("index=6"), QString("info=0600000000"));
    addRow("a packet", 17, QByteArray("0200000061620000"), QString("device=2 channel=25185"),
           QString("buffer=6162"));
    addRow("half a number", 6, QByteArray("07000000ffff"), QString("device=7"), QString());
    addRow("nothing", 6, QByteArray(), QString(), QString());
    addRow("no record", 10, QByteArray(), QString(), QString());
}

void SignatureTests::values()
{
    QFETCH(int, call);
    QFETCH(QByteArray, payload);
    const QByteArray bytes = QByteArray::fromHex(payload);
    const signatures::Signature &signature = *signatures::signatureOf(unsigned(call));
    QTEST(textOf(signatures::argumentsOf(signature, viewOf(bytes))), "arguments");
    QTEST(textOf(signatures::filledInBy(signature, viewOf(bytes))), "filledIn");
}

PADSCOPE_TESTS(SignatureTests);
#include "tst_signatures.moc"
