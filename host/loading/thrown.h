#pragma once

#include <QString>

/// Text of the exception being handled. To be called in a handler only. No tool should throw, but the host
/// must survive one that does.
QString thrownText();
