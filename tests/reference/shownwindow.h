#pragma once

#include <QBackingStore>
#include <QImage>
#include <QSettings>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

#include "bargraph.h"
#include "datapacket.h"
#include "framepacer.h"
#include "monitor.h"
#include "qlineupdownedit.h"
#include "qorvexgraph.h"
#include "rowdelegate.h"

/// A detached main window with settings of its own.
class ShownWindow
{
public:
    using Settings = QVector<QPair<QString, QVariant>>;

    explicit ShownWindow(const Settings &settings = {})
        : window(created(settings))
        , view(window->monitorView)
        , bars(window->barGraphView)
    {
    }
    ~ShownWindow()
    {
        // The view keeps its previous packet for good, by design; a test does not.
        delete view->previousPacket;
        delete window;
    }
    ShownWindow(const ShownWindow &) = delete;
    ShownWindow &operator=(const ShownWindow &) = delete;

    void show(QWidget *tab, const QSize &size)
    {
        window->tabs->setCurrentWidget(tab);
        window->resize(size);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

    void send(QWidget *tab, const QByteArray &bytes, QTime time = QTime(12, 0))
    {
        _DataPacket packet{bytes, static_cast<quint32>(bytes.size()),
                           qChecksum(bytes.constData(), static_cast<uint>(bytes.size())), 1001, time};
        static_cast<qorvexwidget *>(tab)->Display(&packet);
    }

    /// Waits until rows that came at short intervals are asked to be painted.
    bool waitForFrame() const
    {
        return QTest::qWaitFor([this] { return !view->pacer->frameEnd.isActive(); });
    }

    const RowDelegate *delegate() const
    {
        return static_cast<const RowDelegate *>(view->treeView->itemDelegate());
    }

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
    monitor *const view;
    bargraph *const bars;

private:
    static qorvexgraph *created(const Settings &settings)
    {
        QSettings store(QStringLiteral("Corvane"), QStringLiteral("qorvexgraph"));
        store.clear();
        for (const auto &setting : settings)
            store.setValue(setting.first, setting.second);
        store.sync();
        return new qorvexgraph;
    }
};
