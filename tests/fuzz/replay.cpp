// Feeds stored inputs to a fuzz target, without the fuzzer: each file of the folders named.

#include <cstdio>
#include <QDir>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size);

int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const QFileInfo &entry : QDir(argv[i]).entryInfoList(QDir::Files, QDir::Name)) {
            std::fprintf(stderr, "%s\n", qPrintable(entry.fileName()));
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadOnly))
                return 2;
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char *>(bytes.constData()),
                                   static_cast<std::size_t>(bytes.size()));
            ++replayed;
        }
    }
    std::fprintf(stderr, "%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 2;
}
