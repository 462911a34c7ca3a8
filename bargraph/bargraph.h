#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

#include "accessfactory.h"
#include "field.h"
#include "geometry.h"
#include "pictureaccess.h"
#include "qorvexwidget.h"

class QFrame;
class QHBoxLayout;
class QLabel;
class QPainter;
class QSpinBox;

/// The "Bar Graph" tab: four channels as bars and vector dials, or the voltage meter after a voltage report.
///
/// GUI thread only.
class bargraph : public qorvexwidget
{
    Q_OBJECT

public:
    explicit bargraph(TabWindow *window);

    /// Takes signals, frequency and voltage from the reports that carry them; ignores all others.
    void Display(_DataPacket *packet) override;
    /// Resets the extremes of the voltage when the command is ":RMM".
    void CommandTyped(const QString &command) override;

    /// Resets the extremes of the voltage. Takes effect at the next repaint.
    void resetMinMaxVoltage();

    // The picture in words, part by part: the four channels from left to right, and the meter.

    static constexpr int partCount = 5;
    static QString partName(int part);
    /// The numbers that are painted; empty for a part that is not shown.
    QString partText(int part) const;
    /// \return in the coordinates of this view
    QRect partRect(int part) const;
    bool hasPictureIn(const QObject *frame) const;

public slots:
    /// Takes effect at the next repaint. The setting is never written, on purpose.
    /// \param c a Qt::CheckState; Qt::PartiallyChecked is ignored
    void OnClickedClassicMode(int c);
    /// \param c a Qt::CheckState
    void OnLockFrequency(int c);
    /// Sends one step up or down, whatever the size of the change.
    void OnSpinFrequency(int s);
    /// Simulates a falling voltage: ten readings a second, 255 per process. Nothing in the tool starts it; it
    /// can be invoked by its name.
    void volts();
    void on_displayThresholdSlider_valueChanged(int val);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addModeControls(QHBoxLayout *row);
    void addFrequencyControls(QHBoxLayout *row);
    void keepFrameTransparent();
    void takeText(const _DataPacket &packet);
    void parseTextLine();
    void takeFullSignal(const reports::Bytes &bytes);
    void takeShortSignal(const reports::Bytes &bytes);
    void takeVoltage(const reports::Bytes &bytes);
    void takeFrequency(qint16 raw);
    void takeSample();
    void publish(const _DataPacket &packet);
    QRect paintingArea() const;
    QStringList meterTexts(int raw) const;
    void DoHistogram(QPainter *painter, const QRect &area, int channel, int c0, int c60, int c120);
    void DoVectorFine(QPainter *painter, const QRect &area, int channel, int c0, int c60, int c120, int angle,
                      char, char);
    void DoVoltageMeter(QPainter *painter, const QRect &area, int raw);

    QFrame *drawFrame = nullptr; ///< its rectangle is the painting area
    QLabel *proxLabel = nullptr;
    QLabel *freqLabel = nullptr;
    QSpinBox *freqSpin = nullptr;
    bool classicMode = true;
    QString textLine;               ///< characters of the current text line
    int spinFrequency = 0;          ///< value of the spin box that has been sent or shown
    qint16 channelSignals[12] = {}; ///< four channels of three components at 0, 60 and 120 degrees
    char proxChar = 0;
    char unusedChar = 0; ///< passed to DoVectorFine(); never set
    qint64 frequency = 0;
    qint16 frequencyRaw = 0;
    int reportWord8 = -1;  ///< kept, never drawn
    int reportWord10 = -1; ///< kept, never drawn
    int voltageRaw = -1;   ///< last reading, 0 to 1023; -1 is none and selects the four channels
    int voltageMin = -1;   ///< since the last reset; -1 is none
    int voltageMax = -1;   ///< since the last reset; -1 is none
    QFont viewFont;        ///< of every text that is painted

    AccessFactory<pictureAccess> accessFactory;

    friend struct Inspect;
};
