#include <QtEndian>

#include "reference/reference.h"
#include "reference/shownwindow.h"
#include "support/tests.h"

/// The "Bar Graph" tab, controls included, looks as it always has.
class BarPictureTests : public QObject
{
    Q_OBJECT

private slots:
    void pictures_data() { reference::addScenes("barscenes.txt", 6); }
    void pictures();
};

void BarPictureTests::pictures()
{
    QFETCH(QStringList, scene);
    ShownWindow shown({{"Classic Mode", scene[1] == "classic"}});
    shown.show(shown.bars, reference::sizeOf(scene[4]));
    QByteArray report = hex("28 2f 01").leftJustified(40, '\0');
    report[37] = 100;
    char *component = report.data() + 13;
    for (const QString &value : scene[2].split(' ')) {
        qToLittleEndian(value.toShort(), component);
        component += 2;
    }
    ShownWindow::send(shown.bars, report);
    if (scene[3] != "none") {
        QByteArray voltage = hex("34 77 00 0000");
        qToLittleEndian(scene[3].toShort(), voltage.data() + 3);
        ShownWindow::send(shown.bars, voltage);
    }
    reference::verifyNone(reference::difference("bars/" + scene[0], shown.picture(scene[5].toDouble())));
}

PADSCOPE_TESTS(BarPictureTests);
#include "tst_barpictures.moc"
