#pragma once

/// Control of the stand-in driver library, for tests and demonstrations. The library itself is found by its
/// soname, as the tool finds it; these functions are looked up in it by name.
///
/// All of them may be called on any thread, also from within a callback. They take effect whether or not
/// somebody is attached: a board that is plugged in now is there at the next attach.

#ifdef __cplusplus
extern "C" {
#endif

/// Plugs a board in; the plug-and-play callbacks are then called once, on a thread of the library.
/// \param id any number; a second board may have the same
/// \return 0, or -1 when 32 boards are there already
int orvexsim_plug(int id);

/// Pulls the first board with this id out, forgets its callbacks and notifies as orvexsim_plug() does. Called
/// outside a callback it returns when no callback of the board runs any more.
/// \return 0, or -1 when there is no such board
int orvexsim_unplug(int id);

/// Sets how many reports a second the boards with this id send; 100 at first.
/// \param perSecond 1 to 10000
/// \return 0, or -1 when there is no such board or the rate is out of range
int orvexsim_set_rate(int id, int perSecond);

/// Hands the bytes to every callback of the boards with this id, at once and on the calling thread.
/// \param bytes may be null; handed on as it stands, whatever `length` says
/// \return the number of callbacks called, or -1 when nobody is attached to such a board
int orvexsim_send(int id, const unsigned char *bytes, unsigned int length);

#ifdef __cplusplus
}
#endif
