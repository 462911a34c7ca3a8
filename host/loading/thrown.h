#pragma once

#include <QString>

/// What the exception that is being handled says of itself; to be called in a handler only. No tool is meant
/// to throw, but the host must outlive one that does.
QString thrownText();
