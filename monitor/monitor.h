#pragma once

#include <QFont>
#include <QList>
#include <QString>
#include <QTimer>

#include "accessfactory.h"
#include "qorvexwidget.h"
#include "rowaccess.h"

namespace reports {
struct Row;
}

class FramePacer;
class QCheckBox;
class QComboBox;
class QFontComboBox;
class QHBoxLayout;
class QLabel;
class QStandardItemModel;
class QTreeView;
class RowAnnouncer;
class SteadyLayout;

/// The "Monitor" tab: every packet becomes one or more rows of text, which can also go to a daily log file.
///
/// GUI thread only.
class monitor : public qorvexwidget
{
    Q_OBJECT

public:
    explicit monitor(TabWindow *window);

    /// Shows a packet as text: decoded when its type is known, otherwise as characters and hexadecimal.
    /// A packet of a known type with the checksum of the packet before it is dropped.
    void Display(_DataPacket *packet) override;

    /// Adds one row, and appends it to the day's log file while logging is on. A row that can't be logged is
    /// shown all the same.
    /// \param second may be empty; otherwise shown behind `first`, and logged on a line of its own
    void AddData(const QString &first, const QString &second);
    /// Adds one row that shows bytes as characters and in hexadecimal.
    void AddData(const unsigned char *bytes, unsigned int length);

    /// Writes font, font size and logging to the settings. Called when the window closes.
    void saveSettings();

public slots:
    /// Flushes pending text that has no line end yet.
    void OnTimerAddRest();
    /// Applies the font's family; keeps the current size.
    void OnChangedFont(const QFont &font);
    /// \param text point size in decimal
    void OnChangedFontSize(const QString &text);
    /// \param state a Qt::CheckState; Qt::PartiallyChecked is ignored
    void LogToFile(int state);
    void LogToFile(bool on);
    void on_displayThresholdSlider_valueChanged(int value);

private:
    void addControls();
    void addRows();
    void addLogControl(QHBoxLayout *bar);
    void addThresholdControl(QHBoxLayout *bar);
    void addFontControls(QHBoxLayout *bar);
    void applyStoredFont(QFontComboBox *fontBox, QComboBox *sizeBox);
    void showLastRow(const QString &text);
    void addRow(const reports::Row &row);
    void addText(const _DataPacket &packet);
    void completeLine(const _DataPacket &packet);

    QStandardItemModel *model = nullptr;   ///< the rows, one column
    _DataPacket *previousPacket = nullptr; ///< the last packet shown; never freed, by design
    QString pendingText;                   ///< characters of a text line that is not shown yet
    QTimer pendingTextTimer;               ///< flushes pendingText when no line end arrives
    QFont monitorFont;
    QCheckBox *logCheckBox = nullptr;
    QTreeView *treeView = nullptr;
    QLabel *lastRowLabel = nullptr; ///< repeats the newest row
    QList<QString> reservedTexts;   ///< not used
    QList<QString> reservedNames;   ///< not used
    bool logEnabled = false;
    SteadyLayout *column = nullptr; ///< layout of the whole tab
    FramePacer *pacer = nullptr;    ///< coalesces the repaints that rows request
    RowAnnouncer *announcer = nullptr;
    AccessFactory<rowAccess> accessFactory;

    friend struct Inspect;
};
