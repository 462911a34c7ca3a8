#pragma once

#include <QCheckBox>
#include <QCoreApplication>
#include <QLayout>
#include <QPaintEvent>
#include <QSlider>
#include <QTest>
#include <utility>

#include "bargraph/inspect.h"
#include "support/fakewindow.h"
#include "support/packets.h"

/// A bar graph, what boards send it, and what it makes of that.
class BarView
{
public:
    void display(const QByteArray &report, QTime time = noon)
    {
        _DataPacket packet = packetOf(report, time);
        view.Display(&packet);
    }

    /// Also the commands that the window was asked to send: "raw -4; box 0; sent >".
    QString state() const
    {
        const QString sent = QString::fromLatin1(window.commands.join(',').toPercentEncoding("<>,"));
        return Inspect::stateOf(view) + (sent.isEmpty() ? sent : "; sent " + sent);
    }

    QCheckBox *classicBox() const { return view.findChildren<QCheckBox *>().at(0); }
    QSlider *slider() const { return view.findChild<QSlider *>(); }
    QCheckBox *lockBox() const { return view.findChildren<QCheckBox *>().at(1); }
    QSpinBox *box() const { return view.findChild<QSpinBox *>(); }
    QFrame *frame() const { return qobject_cast<QFrame *>(view.layout()->itemAt(1)->widget()); }

    FakeWindow window;
    bargraph view{&window};
};

/// A full signal report, in hexadecimal: the components 1 to 12, the frequency word 16 and two other words.
inline const char *const fullReport =
    "28 2f 01 f3f4f5f6f7 3412 7896 fc 0100 0200 0300 0400 0500 0600 0700 0800 0900 0a00 0b00 0c00 1000 ff";

/// A line of 74 characters, percent-encoded: twelve words, the proximity behind the first line feed, and the
/// frequency at 67.
inline const char *const signalLine =
    "0001 0002 0003 0004 0005 0006*0007 0008 0009 000A 000b 000C%0D%0AO     0010%0D%0A!";
/// What the view has of it, before it is shown.
inline const char *const signalLineState =
    "signals 1 2 3 4 5 6 7 8 9 10 11 12; prox O; raw 16; frequency 900";

/// A text report whose length byte says nothing.
inline QByteArray textReport(const QByteArray &characters)
{
    return "\x28\x32" + characters;
}

/// Shows a view and counts how often its picture is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(bargraph &shown)
        : view(shown)
    {
        view.resize(900, 600);
        view.installEventFilter(this);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QTRY_VERIFY(count > 0);
        take();
    }

    /// Paints what has been requested. \return how often the picture was painted since the last call
    int take()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        return std::exchange(count, 0);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        // A control that is painted has what lies behind it painted too; that is not the picture.
        const QPoint middle = view.rect().center();
        if (event->type() == QEvent::Paint && static_cast<QPaintEvent *>(event)->region().contains(middle))
            ++count;
        return false;
    }

private:
    bargraph &view;
    int count = 0;
};
