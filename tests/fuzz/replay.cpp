// Feeds stored inputs to a fuzz target, without the fuzzer: each file of the folders named.

#include <cstdio>

#include <QDir>
#include <QFile>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        return false;
    }
    std::fprintf(stderr, "%s\n", qPrintable(QFileInfo(path).fileName()));
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        for (const QFileInfo &file : folder.entryInfoList(QDir::Files, QDir::Name)) {
            if (!replay(file.filePath()))
                return 2;
            ++replayed;
        }
    }
    std::fprintf(stderr, "%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 2;
}
