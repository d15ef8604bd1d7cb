#include "test_locale.h"

#include "run_program.h"
#include "test_directories.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

TestLocale::TestLocale(char const* which)
    : m_path("LOCPATH", m_directory.path().c_str()), m_previous(std::setlocale(LC_ALL, nullptr)) {
    // Forced, because the source leaves out categories that nobody here asks.
    std::string const source = std::string(TEST_SOURCE_DIR "/data/locale/") + which;
    ProgramStart start;
    char const* const characters = std::strcmp(which, wide_point) == 0 ? "UTF-8" : "ISO-8859-1";
    start.arguments = {"/usr/bin/localedef", "--force",          "-i", source, "-f",
                       characters,           m_directory / which};
    ProgramResult const made = run_program(start);
    if (made.status == 127 || access("/usr/share/i18n/charmaps", R_OK) != 0) {
        m_trouble = "localedef and its character sets are not installed";
    } else if (std::setlocale(LC_NUMERIC, which) == nullptr) {
        std::fprintf(stderr, "localedef cannot make %s:\n%s", which, made.errors.c_str());
        std::abort();
    }
    std::setlocale(LC_ALL, m_previous.c_str());
}

TestLocale::~TestLocale() {
    std::setlocale(LC_ALL, m_previous.c_str());
}
