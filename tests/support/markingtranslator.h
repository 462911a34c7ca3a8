#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// Translates every text into itself between marks, with the context that it was looked up in and, if there
/// is one, its disambiguation: "{qorvexgraph: <i>No device found.</i>}", "{Context(comment): text}".
///
/// Installed while it lives.
class MarkingTranslator : public QTranslator
{
public:
    MarkingTranslator() { QCoreApplication::installTranslator(this); }
    ~MarkingTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int) const override
    {
        const QString comment =
            disambiguation ? QString::fromLatin1("(%1)").arg(QLatin1String(disambiguation)) : QString();
        return QStringLiteral("{") + QLatin1String(context) + comment + QStringLiteral(": ") +
               QLatin1String(sourceText) + QStringLiteral("}");
    }
};
