// tui::ClerkLogin: who the clerk at the terminal is, from the login that runs the session.
#pragma once

#include "hosts/tui/SessionConfig.h"
#include "vb/Error.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ado {
class Connection;
}

namespace tui {

/// The session cannot tell who the clerk is, or was asked for a user the
/// login may not choose; the description names the login and what to change.
class ClerkRefusal : public vb::Error {
public:
    using vb::Error::Error;
};

/// The name of the process's effective user: the person the session runs
/// for, and the role a PostgreSQL connection without a user name logs in as.
/// Raises ClerkRefusal when the user id has no name.
std::string processLogin();

/// The users that `login` maps to in svUserLogin, ascending; the login is
/// matched exactly, letter case and all, as Unix matches it, whatever the
/// database's collation.
std::vector<std::int32_t> mappedUsers(const ado::Connection &connection, std::string_view login);

/// The user the session runs as. A user asked for (--user or a `user` line)
/// counts only when `login` is among the config's allow-user-option, or when
/// it is the login's own user; otherwise the clerk is the one user the login
/// maps to, who must be in lousers. Raises ClerkRefusal, naming the login, for a login that maps to
/// no user, to more than one or to a user who is not in lousers, and for a
/// user asked for by a login that may not.
std::int32_t sessionUser(const SessionConfig &config, const ado::Connection &connection,
                         std::string_view login);

} // namespace tui
