#include "gen_username.h"

#include "err_report.h"

#include <pwd.h>
#include <unistd.h>

STR gen_get_user_name() {
    passwd const* const entry = getpwuid(getuid());
    if (entry == nullptr) {
        err_report_internal_error("Failed to get username from os", "GEN", "gen_username",
                                  __LINE__);
        return {};
    }
    return entry->pw_name;
}
