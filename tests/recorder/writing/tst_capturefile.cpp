#include <csignal>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

#include "capturefile.h"
#include "recorder/draining/filelimit.h"
#include "support/tests.h"

using recorder::CaptureFile;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("missing");
}

} // namespace

class CaptureFileTests : public QObject
{
    Q_OBJECT

private slots:
    void onlyItsOwnerMayRead();
    void overwritesNothing();
    void followsNoLink();
    void holdsWholeBlocks();
    void removesOnlyItself();

private:
    const QTemporaryDir folder;
    const QString path = folder.filePath("x.pcapng");
};

void CaptureFileTests::onlyItsOwnerMayRead()
{
    const mode_t before = umask(0);
    CaptureFile file(path.toStdString());
    umask(before);
    struct stat status = {};
    QCOMPARE(stat(path.toUtf8(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0600U);
    file.remove();
    QVERIFY(!QFile::exists(path));
}

void CaptureFileTests::overwritesNothing()
{
    QFile there(path);
    QVERIFY(there.open(QFile::WriteOnly));
    there.write("there");
    there.close();
    const CaptureFile file(path.toStdString());
    QVERIFY(!file.isOpen());
    QCOMPARE(file.error(), std::string("File exists"));
    QCOMPARE(contentOf(path), QByteArray("there"));
    QVERIFY(there.remove());
}

void CaptureFileTests::followsNoLink()
{
    const QString target = folder.filePath("target");
    QVERIFY(QFile::link(target, path));
    const CaptureFile file(path.toStdString());
    QVERIFY(!file.isOpen());
    QVERIFY(!QFile::exists(target));
    QVERIFY(QFile::remove(path));
}

void CaptureFileTests::holdsWholeBlocks()
{
    CaptureFile file(path.toStdString());
    QVERIFY(file.write("first "));
    {
        const FileLimit limit(10);
        QVERIFY(!file.write("too long"));
        QCOMPARE(contentOf(path), QByteArray("first "));
        QVERIFY(file.write("1234"));
        QVERIFY(!file.write("5"));
        QCOMPARE(file.error(), std::string("File too large"));
    }
    QVERIFY(file.write(" last"));
    QCOMPARE(contentOf(path), QByteArray("first 1234 last"));
    file.remove();
}

void CaptureFileTests::removesOnlyItself()
{
    CaptureFile file(path.toStdString());
    QVERIFY(QFile::remove(path));
    QFile other(path);
    QVERIFY(other.open(QFile::WriteOnly));
    file.remove();
    QVERIFY(QFile::exists(path));
}

PADSCOPE_TESTS(CaptureFileTests);
#include "tst_capturefile.moc"
