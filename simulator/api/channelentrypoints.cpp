#include "boundary.h"

// The entry points of the synchronous channels.

using namespace boundary;

int orvexOpenSynchronousChannel(int device, OrvexDataCallback callback, void *context)
{
    called(__func__, device, callback, context);
    return askBoard(device, -1, [&](Board &board) { return board.openChannel(callback, context); });
}

void orvexCloseSynchronousChannel(int device, int channel)
{
    called(__func__, device, channel);
    askBoard(device, 0, [&](Board &board) { return board.closeChannel(channel), 0; });
}

int orvexReadSynchronousPacket(int device, int channel, void *buffer, int size, unsigned int timeout)
{
    called(__func__, device, channel, buffer, size, timeout);
    if (!buffer || size < 0)
        return -1;
    return askBoard(device, -1, [&](Board &board) {
        return board.readChannel(channel, static_cast<unsigned char *>(buffer),
                                 static_cast<std::size_t>(size), timeout);
    });
}
