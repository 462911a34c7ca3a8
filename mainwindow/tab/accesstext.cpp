#include "accesstext.h"

#include <QTextBoundaryFinder>

namespace {

/// Whether a word or sentence starts or ends where the finder is.
bool isAtItem(const QTextBoundaryFinder &finder)
{
    return finder.boundaryReasons() & (QTextBoundaryFinder::StartOfItem | QTextBoundaryFinder::EndOfItem);
}

} // namespace

QString AccessText::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int *start,
                                 int *end) const
{
    const bool isWord = boundary == QAccessible::WordBoundary;
    if (!isWord && boundary != QAccessible::SentenceBoundary)
        return QAccessibleTextInterface::textAtOffset(offset, boundary, start, end);
    const QString all = text(0, characterCount());
    const int from = offset == -1 ? all.size() : offset;
    *start = *end = -1;
    if (all.isEmpty() || from < 0 || from > all.size())
        return {};
    QTextBoundaryFinder finder(isWord ? QTextBoundaryFinder::Word : QTextBoundaryFinder::Sentence, all);
    finder.setPosition(from);
    while (!isAtItem(finder) && finder.toPreviousBoundary() > 0) {
    }
    *start = qMax(0, finder.position());
    finder.setPosition(*start);
    while (finder.toNextBoundary() >= 0 && !isAtItem(finder)) {
    }
    *end = finder.position() < 0 ? all.size() : finder.position();
    return all.mid(*start, *end - *start);
}
