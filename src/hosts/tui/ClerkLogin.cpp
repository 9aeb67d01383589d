#include "hosts/tui/ClerkLogin.h"

#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace tui {

namespace {

// The old runtime's "Permission denied".
constexpr std::int32_t PermissionDenied = 70;

[[noreturn]] void refuse(const std::string &message) {
    throw ClerkRefusal(PermissionDenied, "stockverify run", message);
}

std::string quoted(std::string_view text) {
    return "'" + vb::Replace(text, "'", "''") + "'";
}

std::string joined(const std::vector<std::int32_t> &ids) {
    std::string text;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == ids.size() ? " and " : ", ") + std::to_string(ids[i]);
    }
    return text;
}

bool inUsers(const ado::Connection &connection, std::int32_t userId) {
    ado::Recordset rs =
        connection.Execute("select count(*) from lousers where userid = " + std::to_string(userId));
    return vb::CLng(rs.Fields(0).Value()) > 0;
}

} // namespace

std::string processLogin() {
    const uid_t uid = geteuid();
    // getpwuid_r with a buffer of the size the system suggests: the session
    // may run where other threads look up users too.
    long size = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(size > 0 ? static_cast<std::size_t>(size) : 16384);
    passwd entry{};
    passwd *found = nullptr;
    if (getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        refuse("user id " + std::to_string(uid) +
               " has no login name, so no clerk can be found "
               "for it");
    }
    return found->pw_name;
}

std::vector<std::int32_t> mappedUsers(const ado::Connection &connection, std::string_view login) {
    // The database compares text without regard to letter case, as SQL Server
    // does; Unix does not, so "Balu" and "balu" are sorted out here.
    ado::Recordset rs =
        connection.Execute("select login, UserID from svUserLogin where login = " + quoted(login) +
                           " order by UserID");
    std::vector<std::int32_t> users;
    for (; !rs.Eof(); rs.MoveNext()) {
        if (vb::CStr(rs.Fields(0).Value()) == login) {
            users.push_back(vb::CLng(rs.Fields(1).Value()));
        }
    }
    return users;
}

std::int32_t sessionUser(const SessionConfig &config, const ado::Connection &connection,
                         std::string_view login) {
    const std::string who = "login '" + std::string(login) + "'";
    const std::vector<std::int32_t> users = mappedUsers(connection, login);
    if (config.userId) {
        const auto &allowed = config.userOptionLogins;
        if (std::find(allowed.begin(), allowed.end(), login) != allowed.end()) {
            return *config.userId;
        }
        // Naming the login's own user chooses nothing: command lines written
        // before the login said who the clerk is keep working for that clerk.
        const bool ownUser = users.size() == 1 && users.front() == *config.userId &&
                             inUsers(connection, users.front());
        if (!ownUser) {
            refuse("--user " + std::to_string(*config.userId) + " is refused: " + who +
                   " is not in allow-user-option of the system config files "
                   "(/etc/stockverify); the clerk is the user the login maps to");
        }
        return *config.userId;
    }
    if (users.empty()) {
        refuse(who + " maps to no user: the administrator adds it to the table svUserLogin");
    }
    if (users.size() > 1) {
        refuse(who + " maps to users " + joined(users) +
               " in svUserLogin: the administrator keeps one");
    }
    if (!inUsers(connection, users.front())) {
        refuse(who + " maps to user " + std::to_string(users.front()) + ", who is not in lousers");
    }
    return users.front();
}

} // namespace tui
