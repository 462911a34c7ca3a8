// A driver library of three calls: a command "1" begins a replay, and any other ends it; a callback that is
// registered is called at once.

namespace {

int isReplay = 0;

}

extern "C" {

__attribute__((visibility("default"))) int orvexsim_replay_is_on()
{
    return isReplay;
}

__attribute__((visibility("default"))) int orvexSendCommand(int, const char *command)
{
    isReplay = *command == '1' ? 1 : 0;
    return 0;
}

__attribute__((visibility("default"))) void
orvexSetCallback(int device, void (*callback)(int, const unsigned char *, unsigned int, void *),
                 void *context)
{
    const unsigned char report = 5;
    callback(device, &report, 1, context);
}

__attribute__((visibility("default"))) void orvexSetPnpCallback(void (*callback)(void *), void *context)
{
    callback(context);
}
}
