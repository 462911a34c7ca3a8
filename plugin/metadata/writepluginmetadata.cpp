// Build-time program: turns a plugin's metadata from readable JSON into the bytes of its metadata section.
//
//     writepluginmetadata INPUT.json OUTPUT.inc
//
// The output is a list of numbers to be included into an array: "QTMETADATA", two blanks, and Qt's binary
// JSON.

#include <cstdio>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace {

int fail(const QString &file, const QString &reason)
{
    std::fprintf(stderr, "writepluginmetadata: %s: %s\n", qPrintable(file), qPrintable(reason));
    return 2;
}

QByteArray asNumbers(const QByteArray &bytes)
{
    QByteArray text;
    for (int i = 0; i < bytes.size(); ++i) {
        text += QByteArray::number(static_cast<unsigned char>(bytes.at(i)));
        text += i % 16 == 15 ? ",\n" : ", ";
    }
    return text + '\n';
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return fail(QStringLiteral("arguments"), QStringLiteral("an input and an output file are needed"));
    QFile input(QFile::decodeName(argv[1]));
    if (!input.open(QIODevice::ReadOnly))
        return fail(input.fileName(), input.errorString());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(input.readAll(), &error);
    if (!document.isObject())
        return fail(input.fileName(),
                    QStringLiteral("byte %1: %2").arg(error.offset).arg(error.errorString()));
    QSaveFile output(QFile::decodeName(argv[2]));
    if (!output.open(QIODevice::WriteOnly))
        return fail(output.fileName(), output.errorString());
    output.write(asNumbers("QTMETADATA  " + document.toBinaryData()));
    return output.commit() ? 0 : fail(output.fileName(), output.errorString());
}
