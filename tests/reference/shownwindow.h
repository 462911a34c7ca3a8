#pragma once

#include <QBackingStore>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "qorvexgraph.h"
#include "reference/inspect.h"
#include "support/otherstore.h"
#include "support/packets.h"

/// A detached main window with settings of its own.
class ShownWindow
{
public:
    using Settings = QVector<QPair<QString, QVariant>>;

    explicit ShownWindow(const Settings &settings = {})
        : window(created(settings))
        , tabs(window->findChild<QTabWidget *>())
        , view(window->findChild<monitor *>())
        , bars(window->findChild<bargraph *>())
        , model(view->findChild<QStandardItemModel *>())
    {
        window->findChild<QLineEdit *>()->setEnabled(false); // no cursor that blinks
    }
    ~ShownWindow()
    {
        // The view keeps its previous packet for good, by design; a test does not.
        delete Inspect::previousPacket(*view);
        delete window;
    }
    ShownWindow(const ShownWindow &) = delete;
    ShownWindow &operator=(const ShownWindow &) = delete;

    void show(QWidget *tab, const QSize &size = {480, 360})
    {
        tabs->setCurrentWidget(tab);
        window->resize(size);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

    static void send(qorvexwidget *tab, const QByteArray &bytes, QTime time = noon)
    {
        _DataPacket packet = packetOf(bytes, time);
        tab->Display(&packet);
    }

    void add(const QString &text) { view->AddData(text, QString()); }

    /// Returns when rows that came at short intervals are painted, and the layouts that they made due.
    void settle(int rounds = 3)
    {
        const FramePacer *pacer = Inspect::pacer(*view);
        if (pacer && !QTest::qWaitFor([pacer] { return !Inspect::isHeldBack(*pacer); }))
            qFatal("the frame does not end");
        for (int i = 0; i < rounds; ++i)
            QCoreApplication::processEvents();
    }

    QTreeView *rows() const { return Inspect::rows(*view); }
    QLabel *label() const { return Inspect::label(*view); }
    const RowDelegate &delegate() const { return static_cast<const RowDelegate &>(*rows()->itemDelegate()); }

    /// The window, painted anew.
    QImage picture(qreal pixelRatio = 1) const
    {
        QImage image(window->size() * pixelRatio, QImage::Format_RGB32);
        image.setDevicePixelRatio(pixelRatio);
        image.fill(Qt::magenta);
        window->render(&image);
        return image;
    }

    /// What stands on the screen, as it became by all paintings so far.
    QImage onScreen() const
    {
        const auto *store = dynamic_cast<const QImage *>(window->backingStore()->paintDevice());
        if (!store)
            qFatal("the platform does not paint into an image");
        const QSize size = window->size() * window->devicePixelRatioF();
        return store->copy({{0, 0}, size}).convertToFormat(QImage::Format_RGB32);
    }

    qorvexgraph *const window;
    QTabWidget *const tabs;
    monitor *const view;
    bargraph *const bars;
    QStandardItemModel *const model;

private:
    static qorvexgraph *created(const Settings &settings)
    {
        otherStore().clear();
        for (const auto &[key, value] : settings)
            otherStore().setValue(key, value);
        return new qorvexgraph;
    }
};
