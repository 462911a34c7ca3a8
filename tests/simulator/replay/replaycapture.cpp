#include "simulator/replay/replaycapture.h"

#include <QTest>
#include <sys/mman.h>
#include <unistd.h>

using blocks::number;

quint64 ReplayCapture::add(double ms, QByteArray packet)
{
    packet.replace(16, 8, number(sequence, 8));
    packet.replace(24, 4, number(session, 4));
    packets.append(blocks::packet(startNs + static_cast<quint64>(ms * 1e6), packet));
    return sequence++;
}

void ReplayCapture::call(double ms, int call, int board, const QByteArray &arguments, int result,
                         const QByteArray &filledIn, int returnFlags)
{
    const quint64 called = add(ms, packetBytes(2, 1, call, board, 0, arguments));
    add(ms, packetBytes(3, returnFlags, call, board, result, filledIn, quint32(called)));
}

void ReplayCapture::enumeration(double ms, const QList<int> &ids)
{
    call(ms, 9, 0, {}, ids.size());
    for (int i = 0; i < ids.size(); ++i)
        call(ms, 10, 0, number(quint64(i), 4), 1, deviceRecord(ids[i]));
}

void ReplayCapture::seen(double ms, int board, int index)
{
    add(ms, packetBytes(7, 1, 0, board, 0, number(1, 4) + number(quint64(index), 4)));
}

void ReplayCapture::gone(double ms, int board)
{
    add(ms, packetBytes(7, 1, 0, board, 0, number(2, 4) + number(0xFFFFFFFF, 4)));
}

QByteArray ReplayCapture::deviceRecord(int id, char filling)
{
    return number(6, 4) + QByteArray(16, filling) + number(quint64(id), 4) + QByteArray(816, filling);
}

QByteArray ReplayCapture::scenario(const QByteArray &members) const
{
    file();
    return write("replay.json", "{\"title\": \"t\", \"replay\": {\"capture\": \"field.pcapng\"" +
                                    QByteArray(members.isEmpty() ? "" : ", ") + members + "}}");
}

QByteArray ReplayCapture::write(const QString &name, const QByteArray &contents) const
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        qFatal("the file cannot be written");
    return file.fileName().toUtf8();
}

void addTen(ReplayCapture &capture)
{
    const char *const reports[] = {"04c800", "04c801", "04c802", "04c803", "04c804",
                                   "04c805", "04c806", "04c807", "04c808", "04c809"};
    for (int i = 0; i < 10; ++i)
        capture.report(5 * i, i % 3 == 0 ? 1002 : 1001, reports[i]);
}

const QList<QByteArray> ten{"1002:04c800", "1001:04c801", "1001:04c802", "1002:04c803", "1001:04c804",
                            "1001:04c805", "1002:04c806", "1001:04c807", "1001:04c808", "1002:04c809"};

QList<QByteArray> heard(const Recorder &recorder)
{
    QList<QByteArray> reports;
    for (const Recorder::Delivery &delivery : recorder.deliveries()) {
        const QByteArray bytes(reinterpret_cast<const char *>(delivery.bytes.data()),
                               static_cast<int>(delivery.bytes.size()));
        reports.append(QByteArray::number(delivery.device) + ':' + bytes.toHex());
    }
    return reports;
}

OrvexsimReplay replayOf(const SimulatedLibrary &library)
{
    OrvexsimReplay replay{};
    if (library.replay(&replay) != 0)
        replay.state = -1;
    return replay;
}

bool ends(const SimulatedLibrary &library)
{
    return QTest::qWaitFor([&] { return replayOf(library).state == ORVEXSIM_REPLAY_ENDED; }, 10000);
}

StandardError::StandardError()
    : file(memfd_create("errors", MFD_CLOEXEC))
    , before(dup(STDERR_FILENO))
{
    dup2(file, STDERR_FILENO);
}

StandardError::~StandardError()
{
    dup2(before, STDERR_FILENO);
    close(before);
    close(file);
}

QByteArray StandardError::text() const
{
    QByteArray bytes(10000, '\0');
    bytes.resize(static_cast<int>(pread(file, bytes.data(), static_cast<std::size_t>(bytes.size()), 0)));
    return bytes;
}

Playing::Playing(const QByteArray &path)
{
    if (library.choose(path.constData()) != 0)
        qFatal("%s", library.error().c_str());
    library.orvexAttach();
    library.orvexSetPnpCallback(Recorder::pnp, &recorder);
    for (const int id : library.boardIds())
        listen(id);
}

bool Playing::hears(std::size_t count) const
{
    return QTest::qWaitFor([&] { return recorder.count() >= count; }, 10000);
}

QList<int> Playing::ids() const
{
    QList<int> found;
    for (int i = 0; i < library.orvexGetDeviceCount(); ++i) {
        _ORVEX_DEVICE_INFO info{};
        info.recordKind = 6;
        found.append(library.orvexEnumDeviceInfo(i, &info) == 1 ? info.deviceId : -1);
    }
    return found;
}
