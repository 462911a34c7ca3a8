#pragma once

class QSettings;

/// Makes settings safe to read and write, whatever their file holds at the start.
///
/// Qt decodes every value of a file when the first is asked for, and again when one is written. A value that
/// promises more than there is memory for then ends the program with an exception, and one that is nested
/// without end with its stack. Such a file is renamed to end in ".damaged-1" or a higher number, and the
/// settings start empty; one that is shared with other programs is left alone and not read. Does nothing
/// about a file in a folder that can't be written. Silent. GUI thread.
void setAsideDamagedFile(QSettings &settings);
