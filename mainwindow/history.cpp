#include "history.h"

#include <QSettings>

#include "qlineupdownedit.h"
#include "qorvexgraph.h"

namespace {

constexpr int maxLinesRead = 30;
constexpr int lastIndexWritten = 30;

QString keyOf(int index)
{
    return qorvexgraph::tr("history/%1").arg(index);
}

} // namespace

void loadHistory(QLineUpDownEdit &field, const QSettings &settings)
{
    for (int index = 0; index < maxLinesRead; ++index) {
        const QString line = settings.value(keyOf(index)).toString();
        if (line.isNull())
            break;
        field.addToHistory(line);
    }
}

void saveHistory(const QLineUpDownEdit &field, QSettings &settings)
{
    const QList<QString> &lines = field.historyLines();
    for (int index = 0; index < lines.size() && index <= lastIndexWritten; ++index)
        settings.setValue(keyOf(index), lines.at(index));
}
