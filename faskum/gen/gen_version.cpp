#include "gen_version.h"

char const* gen_get_version() {
    return GEN_VERSION;
}
