#include <nlohmann/json.hpp>

#include "program.h"
#include "support/tests.h"

/// `padscope redact` of a whole recording.
class RedactedBoardTests : public QObject
{
    Q_OBJECT

private slots:
    void simulatedBoard();

private:
    const Files files;
};

namespace {

nlohmann::json decoded(const QString &path)
{
    nlohmann::json list;
    for (const QByteArray &line : padscope({"decode", "--format", "jsonl", path}).lines())
        list.push_back(nlohmann::json::parse(line.toStdString()));
    return list;
}

/// Of the fields of reports.
const QStringList blankedFields{"signal1.reportWord8",
                                "signal1.reportWord10",
                                "signal1.xFine0",
                                "signal1.xFine60",
                                "signal1.xFine120",
                                "signal1.yFine0",
                                "signal1.yFine60",
                                "signal1.yFine120",
                                "signal1.xCoarse0",
                                "signal1.xCoarse60",
                                "signal1.xCoarse120",
                                "signal1.yCoarse0",
                                "signal1.yCoarse60",
                                "signal1.yCoarse120",
                                "signal2.raw0",
                                "signal2.raw60",
                                "signal2.raw120",
                                "signal2.norm0",
                                "signal2.norm60",
                                "signal2.norm120",
                                "signal4.integrator0",
                                "signal4.integrator60",
                                "signal4.integrator120",
                                "signal5.integrator0",
                                "signal5.integrator60",
                                "signal5.integrator120",
                                "signal5.norm0",
                                "signal5.norm60",
                                "signal5.norm120",
                                "phase.xRs0",
                                "phase.xRs60",
                                "phase.xRs120",
                                "phase.xFull0",
                                "phase.xFull60",
                                "phase.xFull120",
                                "phase.yRs0",
                                "phase.yRs60",
                                "phase.yRs120",
                                "phase.yFull0",
                                "phase.yFull60",
                                "phase.yFull120",
                                "phase.dcOffset0",
                                "phase.dcOffset60",
                                "phase.dcOffset120",
                                "dualPen.pen1X",
                                "dualPen.pen1Y",
                                "dualPen.pen2X",
                                "dualPen.pen2Y",
                                "position.x",
                                "position.y",
                                "position.fineX",
                                "position.fineY",
                                "position.xPitchNumber",
                                "position.yPitchNumber",
                                "position.driveX",
                                "position.polarityX",
                                "position.driveY",
                                "position.polarityY"};

} // namespace

/// A recording of a simulated board: every field that is to be blanked is, in every report; all others stay.
void RedactedBoardTests::simulatedBoard()
{
    const QString in = QStringLiteral(DOCS_FOLDER "/all-kinds.pcapng");
    const QString out = files.path("simulated");
    QCOMPARE(padscope({"redact", in, "-o", out}).status, 0);
    QCOMPARE(padscope({"check", out}).status, 0);
    const nlohmann::json before = decoded(in);
    const nlohmann::json after = decoded(out);
    QCOMPARE(after.size(), before.size());
    int blanked = 0;
    QStringList texts;
    for (std::size_t i = 0; i < after.size(); ++i) {
        QCOMPARE(after[i].size(), before[i].size());
        for (const auto &[name, value] : before[i].items()) {
            const bool isBlanked = blankedFields.contains(QString::fromStdString(name));
            blanked += isBlanked && value != 0 ? 1 : 0;
            if (isBlanked)
                QCOMPARE(after[i][name].dump(), std::string("0"));
            else if (name == "text.characters")
                texts += QString::fromStdString(after[i][name]);
            else if (name != "flags")
                QCOMPARE(after[i][name].dump(), value.dump());
        }
    }
    QCOMPARE(texts,
             (QStringList{"board 1001 ready!", "[?] commands: . B U8 U0 < > V T ? :RMM :MDU0 :MDP0!"}));
    QVERIFY(blanked > 1000); // 160 reports with up to 15 such fields
}

PADSCOPE_TESTS(RedactedBoardTests);
#include "tst_redactedboard.moc"
