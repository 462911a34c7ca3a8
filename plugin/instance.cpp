#include <QtPlugin>

#include "tendropadscope.h"

// The metadata stand in a form that a host of an older Qt reads, which the moc no longer writes.
QT_PLUGIN_METADATA_SECTION
static constexpr unsigned char qt_pluginMetaData[] = {
#include "pluginmetadata.inc"
};

QT_MOC_EXPORT_PLUGIN(TendroPadscope, TendroPadscope)
