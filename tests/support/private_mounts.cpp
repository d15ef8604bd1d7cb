#include "private_mounts.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

bool enter_private_mounts() {
    int const spaces = geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    return unshare(spaces) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool mount_over(std::string const& source, std::string const& target) {
    return mount(source.c_str(), target.c_str(), nullptr, MS_BIND, nullptr) == 0;
}
