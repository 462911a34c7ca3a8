#pragma once

#include <QObject>
#include <QPointer>

#include "tendroplugininterface.h"

class qorvexgraph;

/// The object that the host loads: identity, launch button and window of the tool.
class TendroPadscope : public QObject, public TendroPluginInterface
{
    Q_OBJECT
    Q_INTERFACES(TendroPluginInterface)

public:
    TendroPadscope() = default;

    QString id() const override;
    QString description() const override;
    QString copyright() const override;
    QString version() const override;
    QString category() const override;
    void closeWidget() override;
    QAction *action() override;
    QWidget *widget() override;

private:
    QPointer<qorvexgraph> toolWindow; ///< the window; deleted by the host
    QAction *toolAction = nullptr;    ///< child of this object
};
