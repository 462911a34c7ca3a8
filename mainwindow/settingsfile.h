#pragma once

class QSettings;

/// Decodes all settings once, and quarantines a file that Qt can't decode.
///
/// A value that announces more entries than there is memory for makes Qt throw std::bad_alloc. Such a file is
/// renamed to end in ".damaged-1" or a higher number, and the settings start empty. A file that is shared
/// with other programs is neither renamed nor read. Not handled: a file in a folder that can't be written,
/// and values nested so deeply that Qt exhausts the stack. Silent. GUI thread.
void quarantineDamagedFile(QSettings &settings);
