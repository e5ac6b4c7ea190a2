#pragma once

namespace data {

/// How long the database is waited for, in seconds.
struct WaitLimits
{
    int lock = 10;   ///< for rows and tables that another session holds
    int silence = 4; ///< of a server during a call, before it is asked whether it still answers
    int answer = 5;  ///< to that question, and to the wish to be let in
    int turn = 60;   ///< for another workstation that starts or upgrades, before the user is asked
};

/// The limits in force; tests may change them.
WaitLimits &waitLimits();

} // namespace data
