#include "simulator/boundary.h"
#include "simulator/orvexsim.h"

using namespace boundary;

extern "C" {

ORVEXSIM_EXPORT int orvexsim_plug(int id)
{
    return guarded(-1, [&] { return Library::instance().plug(id) ? 0 : -1; });
}

ORVEXSIM_EXPORT int orvexsim_unplug(int id)
{
    return guarded(-1, [&] { return Library::instance().unplug(id) ? 0 : -1; });
}

ORVEXSIM_EXPORT int orvexsim_set_rate(int id, int perSecond)
{
    return guarded(-1, [&] { return Library::instance().setRate(id, perSecond) ? 0 : -1; });
}

ORVEXSIM_EXPORT int orvexsim_send(int id, const unsigned char *bytes, unsigned int length)
{
    return guarded(-1, [&] {
        const auto boards = Library::instance().boardsWith(id);
        int called = 0;
        for (const auto &board : boards)
            called += board->deliver(bytes, length);
        return boards.empty() ? -1 : called;
    });
}

} // extern "C"
