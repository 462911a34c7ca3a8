#pragma once

/// X(name): what the simulator has beside the entry points, for a host that controls it through the tap.
#define ORVEXSIM_NAMES(X)                                                                                    \
    X(orvexsim_plug)                                                                                         \
    X(orvexsim_unplug)                                                                                       \
    X(orvexsim_set_rate)                                                                                     \
    X(orvexsim_boards)                                                                                       \
    X(orvexsim_send)                                                                                         \
    X(orvexsim_send_on)                                                                                      \
    X(orvexsim_totals)                                                                                       \
    X(orvexsim_counts)                                                                                       \
    X(orvexsim_wait_delivered)                                                                               \
    X(orvexsim_scenario_count)                                                                               \
    X(orvexsim_scenario)                                                                                     \
    X(orvexsim_choose)                                                                                       \
    X(orvexsim_current_scenario)                                                                             \
    X(orvexsim_fault)                                                                                        \
    X(orvexsim_fault_text)                                                                                   \
    X(orvexsim_fault_is_on)                                                                                  \
    X(orvexsim_trigger)                                                                                      \
    X(orvexsim_last_error)                                                                                   \
    X(orvexsim_replay)                                                                                       \
    X(orvexsim_replay_is_on)                                                                                 \
    X(orvexsim_replay_pause)                                                                                 \
    X(orvexsim_replay_step)                                                                                  \
    X(orvexsim_replay_seek)                                                                                  \
    X(orvexsim_replay_rate)                                                                                  \
    X(orvexsim_replay_restart)                                                                               \
    X(orvexsim_journal_length)                                                                               \
    X(orvexsim_journal)                                                                                      \
    X(orvexsim_calibration)
