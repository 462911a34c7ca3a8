#include "simulator/run.h"

#include <algorithm>
#include <QTest>
#include <set>

#include "simulator/call.h"

void Run::load(const QByteArray &file)
{
    library.reset(); // or the same one would stay
    library = std::make_unique<SimulatedLibrary>(file.constData());
}

Recorder &Run::recorder(const QString &name)
{
    const auto [entry, isNew] = recorders.try_emplace(name);
    Recorder &recorder = entry->second;
    if (isNew && name == "detacher")
        recorder.action = [this](int) { library->orvexDetach(); };
    if (isNew && name == "clearer")
        recorder.action = [this, &recorder](int device) {
            library->orvexClearCallback(device, Recorder::data, &recorder);
        };
    if (isNew && name == "caller")
        recorder.action = [this, &recorder](int device) {
            enumerate(library->orvexGetDeviceCount() - 1, 6);
            library->orvexSetXferMask(device, 1);
            library->orvexSendCommand(device, "?");
            library->orvexSetCallback(device, Recorder::data, &recorder);
            library->plug(50);
            library->unplug(50);
        };
    return recorder;
}

std::pair<int, int> Run::enumerate(int index, unsigned int kind) const
{
    _ORVEX_DEVICE_INFO record{};
    record.recordKind = kind;
    const int result = library->orvexEnumDeviceInfo(index, &record);
    return {result, record.deviceId};
}

namespace {

using In = const QStringList &;

/// "04c801", or "-" for no bytes.
Bytes bytesOf(const QString &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex.toLatin1());
    return {bytes.begin(), bytes.end()};
}

QString hexOf(const Bytes &bytes)
{
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<int>(bytes.size())).toHex();
}

/// "send 1001 04c8" or, on a sort of thread, "send 1001 04c8 2".
QString send(Run &run, In in)
{
    const int id = in[0].toInt();
    const Bytes bytes = bytesOf(in[1]);
    const auto length = static_cast<unsigned int>(bytes.size());
    return QString::number(in.size() == 2 ? run.library->send(id, bytes.data(), length)
                                          : run.library->sendOn(in[2].toInt(), id, bytes.data(), length));
}

QString list(const std::vector<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts += QString::number(number);
    return texts.join(' ');
}

QString ids(Run &run, In)
{
    std::vector<int> found;
    for (int index = 0; index < run.library->orvexGetDeviceCount(); ++index) {
        const auto [result, id] = run.enumerate(index, 6);
        if (result == 1)
            found.push_back(id);
    }
    return list(found);
}

/// Sent and delivered, of a board or in all.
QString counts(Run &run, In in)
{
    unsigned long long sent = 0;
    unsigned long long delivered = 0;
    if (in[0] == "all")
        run.library->totals(&sent, &delivered);
    else if (run.library->counts(in[0].toInt(), &sent, &delivered) != 0)
        return "none";
    return QString("%1 %2").arg(sent).arg(delivered);
}

QString scenarios(Run &run, In)
{
    QStringList names;
    char name[64];
    char title[200];
    for (int i = 0; run.library->scenario(i, name, sizeof name, title, sizeof title) == 0; ++i)
        names += qstrlen(title) > 5 ? name : "(no title)";
    return names.size() == run.library->scenarioCount() ? names.join(' ') : "another number of them";
}

QString current(Run &run, In)
{
    char name[200];
    run.library->currentScenario(name, sizeof name);
    return name;
}

QString faults(Run &run, In)
{
    QStringList names;
    for (int index = 0; const char *name = run.library->fault(index); ++index)
        names += name;
    return names.join(' ');
}

QString entryPoints(Run &run, In)
{
    int found = 0;
#define COUNT(name) found += run.library->name != nullptr;
    ORVEX_LOOKUPS(COUNT)
#undef COUNT
    return QString::number(found);
}

QString loadWith(Run &run, const QString &scenario)
{
    qputenv("ORVEXSIM_SCENARIO", scenario.toUtf8());
    run.load(SIMULATOR_FILE);
    return {};
}

QString loadWithFile(Run &run, In in)
{
    QFile file(run.folder.filePath("scenario.json"));
    if (!file.open(QIODevice::WriteOnly) || file.write(in.join(' ').toUtf8()) < 0)
        qFatal("the file cannot be written");
    return loadWith(run, file.fileName());
}

QString loadVariant(Run &run, In in)
{
    run.load(SIMULATOR_LIBRARIES "/" + in[0].toUtf8() + "/liborvexboardex.so.1");
    return {};
}

/// Whether neither reports nor notifications come for a tenth of a second.
QString isSilent(Run &run, In in)
{
    const Recorder &recorder = run.recorder(in[0]);
    const auto reports = recorder.count();
    const auto notifications = recorder.notifications();
    QTest::qWait(100);
    return QString::number(recorder.count() == reports && recorder.notifications() == notifications);
}

QString devices(Run &run, In in)
{
    std::set<int> ids;
    for (const Recorder::Delivery &delivery : run.recorder(in[0]).deliveries())
        ids.insert(delivery.device);
    return list({ids.begin(), ids.end()});
}

/// How many different ones there are of something that each report has.
template <typename Function>
QString different(Run &run, In in, Function valueOf)
{
    std::set<decltype(valueOf(Recorder::Delivery()))> values;
    for (const Recorder::Delivery &delivery : run.recorder(in[0]).deliveries())
        values.insert(valueOf(delivery));
    return QString::number(values.size());
}

/// Whether two recorders have got the same 150 reports first.
QString same150(Run &run, In in)
{
    const auto one = run.recorder(in[0]).deliveries();
    const auto other = run.recorder(in[1]).deliveries();
    const auto areSame = [](const auto &a, const auto &b) { return a.bytes == b.bytes; };
    return QString::number(std::equal(one.begin(), one.begin() + 150, other.begin(), areSame));
}

/// Whose thread brought these bytes; the board's is that of the first report.
QString threadOf(Run &run, In in)
{
    const auto deliveries = run.recorder(in[0]).deliveries();
    const Bytes bytes = bytesOf(in[1]);
    const auto one = std::find_if(deliveries.begin(), deliveries.end(),
                                  [&](const Recorder::Delivery &each) { return each.bytes == bytes; });
    if (one == deliveries.end())
        return "none";
    if (one->thread == std::this_thread::get_id())
        return "caller";
    return one->thread == deliveries.front().thread ? "board" : "other";
}

QString onThisThread(Run &run, In in)
{
    const auto deliveries = run.recorder(in[0]).deliveries();
    return QString::number(
        std::count_if(deliveries.begin(), deliveries.end(), [](const Recorder::Delivery &each) {
            return each.thread == std::this_thread::get_id();
        }));
}

} // namespace

const std::map<QString, Word> &words()
{
    using Delivery = Recorder::Delivery;
    static const std::map<QString, Word> all{
        // The library: with a scenario in the environment, or a variant of it.
        {"scenario", {[](Run &run, In in) { return loadWith(run, in.value(0)); }, false}},
        {"scenario-file", {loadWithFile, false}},
        {"variant", {loadVariant, false}},
        {"unload", {[](Run &run, In) { return run.library->unload(), QString(); }, false}},
        {"is-loaded", {[](Run &, In) { return QString::number(SimulatedLibrary::isLoaded()); }}},
        {"entry-points", {entryPoints}},
        {"has", {[](Run &run, In in) { return QString::number(run.library->has(in[0].toLatin1())); }}},
        {"threads", {[](Run &run, In) { return QString::number(Run::threadCount() - run.threadsBefore); }}},
        // Its entry points.
        {"attach", {[](Run &run, In in) { return call(run, in, run.library->orvexAttach); }, false}},
        {"detach", {[](Run &run, In in) { return call(run, in, run.library->orvexDetach); }, false}},
        {"count", {[](Run &run, In in) { return call(run, in, run.library->orvexGetDeviceCount); }}},
        {"ids", {ids}},
        {"enumerate", {[](Run &run, In in) {
             return QString::number(run.enumerate(in[0].toInt(), in[1].toUInt()).first);
         }}},
        {"enumerate-null",
         {[](Run &run, In) { return QString::number(run.library->orvexEnumDeviceInfo(0, nullptr)); }}},
        {"listen", {[](Run &run, In in) { return call(run, in, run.library->orvexSetCallback); }, false}},
        {"clear", {[](Run &run, In in) { return call(run, in, run.library->orvexClearCallback); }, false}},
        {"listen-pnp",
         {[](Run &run, In in) { return call(run, in, run.library->orvexSetPnpCallback); }, false}},
        {"command", {[](Run &run, In in) { return call(run, in, run.library->orvexSendCommand); }, false}},
        // Its control.
        {"plug", {[](Run &run, In in) { return call(run, in, run.library->plug); }, false}},
        {"unplug", {[](Run &run, In in) { return call(run, in, run.library->unplug); }, false}},
        {"rate", {[](Run &run, In in) { return call(run, in, run.library->setRate); }, false}},
        {"boards", {[](Run &run, In) { return list(run.library->boardIds()); }}},
        {"send", {send, false}},
        {"counts", {counts}},
        {"delivered", {[](Run &run, In in) { return call(run, in, run.library->waitDelivered); }, false}},
        {"scenarios", {scenarios}},
        {"choose", {[](Run &run, In in) { return call(run, in, run.library->choose); }, false}},
        {"current", {current}},
        {"faults", {faults}},
        {"sentence", {[](Run &run, In in) {
             return QString(run.library->faultText(in[0] == "null" ? nullptr : in[0].toLatin1().constData()));
         }}},
        {"is-on", {[](Run &run, In in) { return call(run, in, run.library->faultIsOn); }}},
        {"trigger", {[](Run &run, In in) { return call(run, in, run.library->trigger); }, false}},
        {"error", {[](Run &run, In) { return QString::fromStdString(run.library->error()); }}},
        // What a recorder was called with.
        {"heard", {[](Run &run, In in) { return QString::number(run.recorder(in[0]).count()); }}},
        {"notified", {[](Run &run, In in) { return QString::number(run.recorder(in[0]).notifications()); }}},
        {"is-silent", {isSilent, false}},
        {"seen",
         {[](Run &run, In in) { return QString::number(run.recorder(in[0]).timesSeen(bytesOf(in[1]))); }}},
        {"text", {[](Run &run, In in) {
             return QString::number(
                 run.recorder(in[0]).timesSeen(in[1].toInt(), in.mid(2).join(' ').toLatin1()));
         }}},
        {"first", {[](Run &run, In in) { return hexOf(run.recorder(in[0]).deliveries().front().bytes); }}},
        {"last-size", {[](Run &run, In in) {
             return QString::number(run.recorder(in[0]).deliveries().back().bytes.size());
         }}},
        {"last", {[](Run &run, In in) { return hexOf(run.recorder(in[0]).deliveries().back().bytes); }}},
        {"devices", {devices}},
        {"lengths", {[](Run &run, In in) {
             return different(run, in, [](const Delivery &one) { return one.bytes.size(); });
         }}},
        {"board-threads", {[](Run &run, In in) {
             return different(run, in, [](const Delivery &one) { return one.thread; });
         }}},
        {"same-150", {same150}},
        {"thread", {threadOf}},
        {"on-this-thread", {onThisThread}},
        // Milliseconds since "clock".
        {"clock", {[](Run &run, In) { return run.clock.start(), QString(); }, false}},
        {"took", {[](Run &run, In) { return QString::number(run.clock.elapsed()); }, false}},
    };
    return all;
}
