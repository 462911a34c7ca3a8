#include <thread>

#include "listenernumbers.h"
#include "support/tests.h"

namespace {

constexpr std::uint32_t unknown = 4294967295;

const char function[2] = {};
char contexts[2000] = {};

std::uint32_t add(int context)
{
    return tap::addListener(function, contexts + context);
}

std::uint32_t number(int context)
{
    return tap::listenerNumber(function, contexts + context);
}

void end(int context)
{
    tap::endListener(function, contexts + context);
}

} // namespace

/// Numbers go on through all functions, as there is one table a process.
class ListenerNumbersTests : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { tap::endListeners(); }
    void firstOnes();
    void goOnBehindTheEnd();
    void thoseThatStayKeepTheirs();
    void moreAtOnceThanThereArePlaces();
    void threadsFindTheirOwn();
};

void ListenerNumbersTests::firstOnes()
{
    QCOMPARE(add(0), 1U);
    QCOMPARE(add(1), 2U);
    QCOMPARE(tap::addListener(function + 1, contexts), 3U);
    QCOMPARE(add(0), 1U);
    QCOMPARE(number(1), 2U);
    QCOMPARE(number(2), unknown);
    QCOMPARE(tap::addListener(nullptr, contexts), 0U);
    QCOMPARE(tap::listenerNumber(nullptr, contexts), 0U);
}

void ListenerNumbersTests::goOnBehindTheEnd()
{
    const std::uint32_t first = add(0);
    end(0);
    QCOMPARE(number(0), first); // for callbacks that are under way
    QCOMPARE(add(0), first + 1);
    QCOMPARE(number(0), first + 1);
    tap::endListeners();
    QCOMPARE(add(0), first + 2);
}

void ListenerNumbersTests::thoseThatStayKeepTheirs()
{
    const std::uint32_t stays = add(0);
    for (int i = 1; i < 1000; ++i) {
        QCOMPARE(add(i), stays + static_cast<std::uint32_t>(i));
        QCOMPARE(number(i), stays + static_cast<std::uint32_t>(i));
        end(i);
    }
    QCOMPARE(number(0), stays);
    QCOMPARE(number(998), stays + 998);
    QCOMPARE(number(1), unknown);
}

void ListenerNumbersTests::moreAtOnceThanThereArePlaces()
{
    const std::uint32_t first = add(0);
    for (int i = 1; i < 256; ++i)
        add(i);
    QCOMPARE(number(255), first + 255);
    QCOMPARE(add(256), unknown);
    QCOMPARE(number(256), unknown);
    end(17);
    QCOMPARE(add(256), first + 256);
    QCOMPARE(number(256), first + 256);
    QCOMPARE(number(255), first + 255);
}

void ListenerNumbersTests::threadsFindTheirOwn()
{
    const std::uint32_t stays = add(0);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int id = 0; id < 4; ++id) {
        threads.emplace_back([&wrong, stays, id] {
            for (int i = 0; i < 5000; ++i) {
                const int context = 1 + id * 400 + i % 400;
                const std::uint32_t added = add(context);
                wrong += number(context) == added && number(0) == stays ? 0 : 1;
                end(context);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

PADSCOPE_TESTS(ListenerNumbersTests);
#include "tst_listenernumbers.moc"
