// A library needs a source file.
