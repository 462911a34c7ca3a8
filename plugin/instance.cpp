#include <QtPlugin>

#include "tendropadscope.h"

// The metadata have a form that hosts of an older Qt read and the moc no longer writes.
QT_PLUGIN_METADATA_SECTION
static constexpr unsigned char qt_pluginMetaData[] = {
#include "pluginmetadata.inc"
};

QT_MOC_EXPORT_PLUGIN(TendroPadscope, TendroPadscope)
