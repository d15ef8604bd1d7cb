#include "gen_username.h"

#include "gen_report.h"

#include <pwd.h>
#include <unistd.h>

STR gen_get_user_name() {
    passwd const* const entry = getpwuid(getuid());
    if (entry == nullptr) {
        report(reports::no_user_name);
        return {};
    }
    return entry->pw_name;
}
