#pragma once

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>
#include <vector>

/// A text of a catalogue's source.
struct Message
{
    QString context;
    QString source;
    QString comment;
    QString translation;
};

/// \param name of a file in the source's folder
inline std::vector<Message> messagesOf(const QString &name)
{
    QFile file(QStringLiteral(TRANSLATION_SOURCES "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no file %s", qPrintable(name));
    QXmlStreamReader xml(&file);
    std::vector<Message> messages;
    Message message;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const auto element = xml.name();
        if (element == QLatin1String("name")) {
            message.context = xml.readElementText();
        } else if (element == QLatin1String("source")) {
            message.source = xml.readElementText();
            message.comment.clear();
        } else if (element == QLatin1String("comment")) {
            message.comment = xml.readElementText();
        } else if (element == QLatin1String("translation")) {
            message.translation = xml.readElementText();
            messages.push_back(message);
        }
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(name), qPrintable(xml.errorString()));
    return messages;
}

/// The names of the files, templates aside.
inline QStringList catalogues()
{
    return QDir(QStringLiteral(TRANSLATION_SOURCES)).entryList({QStringLiteral("*_*.ts")});
}
