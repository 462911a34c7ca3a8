#pragma once

/// Control of the stand-in driver library, for hosts, tests and demonstrations. The library itself is found
/// by its soname, as the tool finds it; these functions are looked up in it by name.
///
/// All of them may be called on any thread, also from within a callback, and none throws. They take effect
/// whether or not somebody is attached: a board that is plugged in now is there at the next attach.
/// Texts are truncated to fit and zero-terminated; a buffer of size 0 may be null.

#ifdef __cplusplus
extern "C" {
#endif

// Boards. In a replay, what is plugged in and out holds until the next change that was recorded, and a board
// that was not recorded sends nothing.

/// Plugs a board in; the hot-plug callbacks are then called once, on a thread of the library. A board that
/// the scenario describes and has not plugged in comes as described, any other as the scenario `default` has
/// it. \param id any number; a second board may have the same \return 0, or -1 when there are 32 boards
/// already, or they would send more than 20,000 reports a second
int orvexsim_plug(int id);

/// Unplugs the first board with this id, forgets its callbacks and notifies as orvexsim_plug() does. Called
/// outside a callback it returns when no callback of the board runs any more.
/// \return 0, or -1 when there is no such board
int orvexsim_unplug(int id);

/// Sets how many reports a second the boards with this id send.
/// \param perSecond 1 to 10000
/// \return 0, or -1 when there is no such board, the rate is out of range, all boards together would send
/// more
///         than 20,000 reports a second, or the scenario is a replay
int orvexsim_set_rate(int id, int perSecond);

/// The ids of the boards that are plugged in, in the order in which they are enumerated.
/// \param ids room for `capacity` ids; may be null when that is 0
/// \return how many boards there are, 0 to 32, also when there is less room
int orvexsim_boards(int *ids, int capacity);

// Reports.

/// Hands the bytes to every callback of the boards with this id, at once and on the calling thread.
/// \param bytes may be null; handed on as it stands, whatever `length` says
/// \return the number of callbacks called, or -1 when nobody is attached to such a board
int orvexsim_send(int id, const unsigned char *bytes, unsigned int length);

enum
{
    ORVEXSIM_CALLERS_THREAD = 0,
    ORVEXSIM_BOARDS_THREAD = 1, ///< between two reports of the board
    ORVEXSIM_NEW_THREAD = 2,
};

/// Does what orvexsim_send() does on the given thread. On the board's thread the bytes are only queued; with
/// the others the callbacks have returned when this function returns. In a replay, boards have no thread: the
/// caller's takes its place.
/// \param bytes not null unless `length` is 0
/// \return the number of callbacks called, 0 for the board's thread, or -1 when nobody is attached to such a
///         board or there is no such sort of thread
int orvexsim_send_on(int thread, int id, const unsigned char *bytes, unsigned int length);

/// How many reports were sent since the library was loaded, and how many callbacks returned from one: with
/// two callbacks a report is delivered twice. A board's counts outlive it. Either pointer may be null.
void orvexsim_totals(unsigned long long *sent, unsigned long long *delivered);

/// The same for the boards with one id, those that are gone included.
/// \return 0, or -1 when there never was such a board, which leaves the counts alone
int orvexsim_counts(int id, unsigned long long *sent, unsigned long long *delivered);

/// Waits until so many reports have been delivered since the library was loaded.
/// \param timeoutMs 0 only looks
/// \return 1, or 0 when the time is over
int orvexsim_wait_delivered(unsigned long long count, unsigned int timeoutMs);

// Scenarios and faults.

/// How many scenarios are shipped with the library.
int orvexsim_scenario_count(void);

/// \param index 0 to orvexsim_scenario_count() - 1, in the order of the names
/// \return 0, or -1 when there is no such scenario
int orvexsim_scenario(int index, char *name, unsigned int nameSize, char *title, unsigned int titleSize);

/// Unplugs every board and plugs in those of another scenario. Who is attached stays so and is notified once.
/// \param scenario name of a shipped one, or path of a file (whatever holds a '/' or ends in ".json" or
///        ".pcapng", which is a capture that is played)
/// \return 0, or -1 with a line in orvexsim_last_error(); then nothing has changed
int orvexsim_choose(const char *scenario);

/// Name or path of the scenario in force, as it was chosen: "default" at first, unless the environment
/// variable ORVEXSIM_SCENARIO names another; empty when that one is not valid. \return the length of the
/// whole
int orvexsim_current_scenario(char *buffer, unsigned int size);

/// Name of a fault that orvexsim_trigger() knows, or null behind the last one. The text is never freed.
/// \param index from 0 on
const char *orvexsim_fault(int index);

/// What the fault does, in an English sentence, or null when there is no such fault. The text is never freed.
const char *orvexsim_fault_text(const char *fault);

/// \return 1 when a fault is on that lasts until it is triggered again, 0 when it is off or nobody is
///         attached, -1 when the fault does not last or there is none
int orvexsim_fault_is_on(const char *fault);

/// Lets a fault happen now, with the default amount of the table of faults in README.md: to every board, or
/// to the first one where that table says so. A fault that lasts is switched off by being triggered again, or
/// by another scenario. \return 0, or -1 with a line in orvexsim_last_error() when there is no such fault,
/// nobody is attached, or the scenario is a replay
int orvexsim_trigger(const char *fault);

/// Why the last scenario or fault failed, in one line without a line feed; empty as long as none failed.
/// \return the length of the whole
int orvexsim_last_error(char *buffer, unsigned int size);

// Replay: a scenario that is a capture. Times are nanoseconds of the capture since the clock's start: where
// the last callback was registered before the first report or notification, or, where the recorded host
// listened to no board of the start, the last attach. Where that was not recorded, or is not played, the
// first report or notification that is played is at 0. A detach ends the replay; the next attach begins it
// anew.
//
// Where these functions are not called from within a callback, what is being delivered is over when they
// return, unless its callback takes longer than 0.1 s. From within a callback they return at once.

enum
{
    ORVEXSIM_REPLAY_WAITING = 1, ///< for callbacks, or for a command of the host
    ORVEXSIM_REPLAY_PLAYING = 2,
    ORVEXSIM_REPLAY_PAUSED = 3,
    ORVEXSIM_REPLAY_ENDED = 4,
};

struct OrvexsimReplay
{
    int state;
    double rate;                ///< asked for: 0.1 to 100, 0 is as fast as possible
    double achievedRate;        ///< capture time over the time it took, without pauses; 0: not known yet
    long long position;         ///< ns
    long long length;           ///< ns, of one round
    unsigned long long sent;    ///< reports, in all rounds
    unsigned long long reports; ///< of one round
    unsigned long long round;   ///< from 1 on
    unsigned long long rounds;  ///< 0: without end
    long long errorMedian;      ///< ns, of delivery against deadline, as are the next two
    long long errorP99;
    long long errorMax;
};

/// \param replay is filled in; not null
/// \return 0, or -1 when the scenario in force is no replay
int orvexsim_replay(struct OrvexsimReplay *replay);

/// Whether the scenario in force is a replay: 1 or 0. Takes no lock and makes no system call, unless it is
/// the first call of the library, which reads the scenario.
int orvexsim_replay_is_on(void);

// The next five return 0, or -1 when the scenario in force is no replay or the value is out of range.

/// \param paused 1 pauses, 0 goes on from there
int orvexsim_replay_pause(int paused);

/// Pauses, sends the next reports at once, in their order, and rests. Returns when they are delivered, or
/// when none was for 0.1 s, as while the host is waited for. From within a callback it returns before they
/// are sent, and orvexsim_replay_pause(), orvexsim_replay_seek() and orvexsim_replay_restart() take back what
/// is still to be sent. \param reports 1 or more
int orvexsim_replay_step(int reports);

/// Goes to another place of this round. What is before it is not sent; the boards become those of the place.
/// \param position 0 to the length, in ns
int orvexsim_replay_seek(long long position);

/// \param rate 0.1 to 100, or 0: as fast as possible
int orvexsim_replay_rate(double rate);

/// From the beginning, first round. A replay that is paused stays so.
int orvexsim_replay_restart(void);

// The call log: the last 4096 calls of entry points.

struct OrvexsimCall
{
    unsigned long long number;       ///< from 0 on
    unsigned long long microseconds; ///< since the library was loaded
    unsigned long long thread;       ///< the caller's, as the system numbers it
    char text[104];                  ///< as in C: orvexSendCommand(1001, ":MDU0\r")
};

/// How many calls there were since the library was loaded.
unsigned long long orvexsim_journal_length(void);

/// The calls from this number on that are still kept, oldest first.
/// \return how many were written, 0 to `capacity`
int orvexsim_journal(unsigned long long from, struct OrvexsimCall *calls, int capacity);

/// \return -1: no board keeps calibration data
int orvexsim_calibration(int id, int sort, unsigned char *bytes);

#ifdef __cplusplus
}
#endif
