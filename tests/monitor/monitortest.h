#pragma once

#include <QLabel>
#include <QLayout>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>

#include "monitor/inspect.h"
#include "support/fakewindow.h"
#include "support/otherstore.h"
#include "support/packets.h"
#include "support/tests.h"

/// Tests of the "Monitor" tab: each has a tab of its own, at first without settings, and what a board sends
/// it.
class MonitorTest : public QObject
{
    Q_OBJECT

protected slots:
    void init()
    {
        otherStore().clear();
        build();
    }
    void cleanup()
    {
        // Never freed by the tab, by design.
        delete Inspect::previousPacket(*view);
        delete view;
        view = nullptr;
    }

protected:
    /// Builds the tab, anew if there is one, with the settings as they stand.
    void build()
    {
        if (view)
            cleanup();
        view = new monitor(&window);
        tree = view->findChild<QTreeView *>();
        model = qobject_cast<QStandardItemModel *>(tree->model());
        lastRow = qobject_cast<QLabel *>(view->layout()->itemAt(2)->widget());
    }

    bool show(const QSize &size = {480, 360})
    {
        view->resize(size);
        view->show();
        return QTest::qWaitForWindowExposed(view);
    }

    /// Shows one report, as the intake does.
    void send(const QByteArray &bytes, QTime time = noon)
    {
        _DataPacket packet = packetOf(bytes, time);
        view->Display(&packet);
    }

    void add(const QString &text) { view->AddData(text, QString()); }

    QStringList rows() const
    {
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row)
            texts.append(model->item(row)->text());
        return texts;
    }

    QString pendingText() const { return Inspect::pendingText(*view); }
    const _DataPacket *previousPacket() const { return Inspect::previousPacket(*view); }

    FakeWindow window;
    monitor *view = nullptr;
    QTreeView *tree = nullptr;
    QStandardItemModel *model = nullptr;
    QLabel *lastRow = nullptr;
};
