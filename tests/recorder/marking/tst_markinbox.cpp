#include <future>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

#include "bytes.h"
#include "markinbox.h"
#include "recorderlink.h"
#include "support/tests.h"
#include "utf8.h"

namespace {

constexpr std::uint32_t session = 0x5f0c93a1;

/// Eight bytes of a time, and the text.
std::string requestOf(const std::string &text)
{
    return std::string("\1\2\0\0\0\0\0\0", 8) + text;
}

int connectTo(const std::string &name)
{
    const int file = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    const marking::Address address = marking::addressOf(name);
    if (connect(file, reinterpret_cast<const sockaddr *>(&address.bytes), address.length) == 0)
        return file;
    close(file);
    return -1;
}

bool sends(int file, const std::string &message)
{
    return send(file, message.data(), message.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(message.size());
}

/// Bytes of the answer; 0 when the connection was closed without one.
ssize_t answerLength(int file)
{
    char answer[16];
    return recv(file, answer, sizeof answer, MSG_DONTWAIT);
}

/// What all requests that are there ask for.
QStringList textsIn(marking::MarkInbox &inbox)
{
    QStringList texts;
    for (int i = 0; i < 100; ++i) {
        if (const std::optional<marking::Mark> mark = inbox.take())
            texts += QString::number(mark->askedNs) + ' ' + QString::fromStdString(mark->text);
    }
    return texts;
}

} // namespace

/// Marks come from the same user, keep to the format, and are never waited for.
class MarkInboxTests : public QObject
{
    Q_OBJECT

private slots:
    void aMarkIsAnswered();
    void marksAreNumbered();
    void whatIsNoRequestIsDropped_data();
    void whatIsNoRequestIsDropped();
    void theLongestText();
    void thoseThatAskForNothing();
    void anotherUserIsTurnedAway();
    void utf8_data();
    void utf8();
};

void MarkInboxTests::aMarkIsAnswered()
{
    marking::MarkInbox inbox(session);
    QVERIFY(inbox.descriptor() >= 0);
    auto answer = std::async(std::launch::async, [] {
        const std::map<pid_t, marking::RecorderLink> recorders = marking::connectToRecorders();
        return recorders.at(getpid()).mark("pen lifted");
    });
    const std::uint64_t beforeNs = marking::monotonicNs();
    std::optional<marking::Mark> mark;
    const auto isTaken = [&] { return mark || (mark = inbox.take()); };
    QTRY_VERIFY_WITH_TIMEOUT(isTaken(), 30'000);
    QCOMPARE(mark->text, std::string("pen lifted"));
    QCOMPARE(answer.get(), std::optional<std::uint32_t>(1));
    QVERIFY(mark->askedNs + 5'000'000'000 > beforeNs && mark->askedNs <= marking::monotonicNs());
}

void MarkInboxTests::marksAreNumbered()
{
    marking::MarkInbox inbox(session);
    QCOMPARE(inbox.numbered({7, {}}).text, std::string("mark 1"));
    QCOMPARE(inbox.numbered({8, "pen"}).text, std::string("pen"));
    QCOMPARE(inbox.numbered({9, {}}).text, std::string("mark 3"));
    QCOMPARE(inbox.numbered({9, {}}).askedNs, std::uint64_t{9});
}

void MarkInboxTests::whatIsNoRequestIsDropped_data()
{
    addColumns<QByteArray, QStringList>("message", "texts");
    addRow("a text", QByteArray("\1\2\0\0\0\0\0\0ab", 10), QStringList{"513 ab"});
    addRow("no text", QByteArray("\1\2\0\0\0\0\0\0", 8), QStringList{"513 mark 1"});
    addRow("too short", QByteArray("\1\2\0\0\0\0\0", 7), QStringList());
    addRow("no UTF-8", QByteArray("\1\2\0\0\0\0\0\0a\xFF", 10), QStringList());
    addRow("too long", QByteArray(8 + 65'496, 'a'), QStringList());
}

void MarkInboxTests::whatIsNoRequestIsDropped()
{
    QFETCH(QByteArray, message);
    QFETCH(QStringList, texts);
    marking::MarkInbox inbox(session);
    const int file = connectTo("padscope-record-5f0c93a1");
    QVERIFY(sends(file, message.toStdString()));
    QCOMPARE(textsIn(inbox), texts);
    QCOMPARE(answerLength(file), ssize_t{texts.isEmpty() ? 0 : 4});
    close(file);
}

void MarkInboxTests::theLongestText()
{
    marking::MarkInbox inbox(session);
    const int file = connectTo("padscope-record-5f0c93a1");
    QVERIFY(sends(file, requestOf(std::string(65'495, 'a'))));
    QCOMPARE(textsIn(inbox), QStringList{"513 " + QString(65'495, 'a')});
    close(file);
}

void MarkInboxTests::thoseThatAskForNothing()
{
    marking::MarkInbox inbox(session);
    std::vector<int> silent;
    for (int i = 0; i < 30; ++i) {
        silent.push_back(connectTo("padscope-record-5f0c93a1"));
        QVERIFY(silent.back() >= 0);
        QVERIFY(!inbox.take());
    }
    const int file = connectTo("padscope-record-5f0c93a1");
    QVERIFY(sends(file, requestOf("heard")));
    QCOMPARE(textsIn(inbox), QStringList{"513 heard"});
    // The first ones have made room.
    QCOMPARE(answerLength(silent.front()), ssize_t{0});
    close(file);
    for (const int connection : silent)
        close(connection);
}

void MarkInboxTests::anotherUserIsTurnedAway()
{
    if (geteuid() != 0)
        QSKIP("Only root can be somebody else.");
    marking::MarkInbox inbox(session);
    const pid_t other = fork();
    if (other == 0) {
        const bool isOther = setuid(65534) == 0;
        const int file = connectTo("padscope-record-5f0c93a1");
        _exit(isOther && sends(file, requestOf("from another user")) ? 0 : 1);
    }
    int status = -1;
    QCOMPARE(waitpid(other, &status, 0), other);
    QCOMPARE(status, 0);
    QCOMPARE(textsIn(inbox), QStringList());
}

void MarkInboxTests::utf8_data()
{
    addColumns<QByteArray, bool>("text", "isUtf8");
    addRow("nothing", QByteArray(), true);
    addRow("two to four bytes", QByteArray("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x96\x8A"), true);
    addRow("zero", QByteArray("a\0b", 3), true);
    addRow("Latin-1", QByteArray("\xE9t\xE9"), false);
    addRow("cut", QByteArray("\xE2\x82"), false);
    addRow("too long for what it is", QByteArray("\xC0\xAF"), false);
    addRow("half of a surrogate pair", QByteArray("\xED\xA0\x80"), false);
    addRow("beyond Unicode", QByteArray("\xF4\x90\x80\x80"), false);
    addRow("no first byte", QByteArray("\x80"), false);
}

void MarkInboxTests::utf8()
{
    QFETCH(QByteArray, text);
    QTEST(marking::isUtf8(text.toStdString()), "isUtf8");
}

PADSCOPE_TESTS(MarkInboxTests);
#include "tst_markinbox.moc"
