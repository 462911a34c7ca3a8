// A Qt plugin, but of another host: it has metadata and does not have the tools' interface.
#include <QtPlugin>

class ForeignPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.foreign")
};

#include "foreignplugin.moc"
