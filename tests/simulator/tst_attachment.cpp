#include "simulator/steps.h"
#include "support/tests.h"

/// Boards that are plugged in, enumerated and streaming, and the threads behind them.
class tst_attachment : public Steps
{
    Q_OBJECT
};

PADSCOPE_TESTS(tst_attachment);
#include "tst_attachment.moc"
