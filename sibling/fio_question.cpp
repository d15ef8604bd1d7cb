#include "fio_question.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

FIO_OBSERVER installed_observer = nullptr;

bool ask(char const* path) {
    // With the effective identity, as an open would be judged. That form is also the quickest
    // question: a hit costs a fifth less than stat, a miss the same; plain access pays for
    // switching to the real identity and back.
    if (faccessat(AT_FDCWD, path, F_OK, AT_EACCESS) == 0)
        return true;
    // Sandboxes that do not know the call refuse it like this, which no path can cause.
    return errno == EPERM && access(path, F_OK) == 0;
}

} // namespace

bool fio_path_exists(FIO_FIND const* asker, char const* path) {
    bool const exists = ask(path);
    return installed_observer == nullptr ? exists : installed_observer(asker, path, exists);
}

FIO_OBSERVER fio_set_observer(FIO_OBSERVER observer) {
    FIO_OBSERVER const previous = installed_observer;
    installed_observer = observer;
    return previous;
}
