#include "comma_locale.h"

#include "run_program.h"

#include <clocale>

static char const source[] = R"(
LC_CTYPE
copy "POSIX"
END LC_CTYPE
LC_COLLATE
copy "POSIX"
END LC_COLLATE
LC_MONETARY
copy "POSIX"
END LC_MONETARY
LC_NUMERIC
decimal_point ","
thousands_sep "."
grouping 3;3
END LC_NUMERIC
LC_TIME
copy "POSIX"
END LC_TIME
LC_MESSAGES
copy "POSIX"
END LC_MESSAGES
)";

CommaLocale::CommaLocale()
    : m_path("LOCPATH", m_directory.path().c_str()), m_previous(std::setlocale(LC_ALL, nullptr)) {
    ProgramStart start;
    start.arguments = {
        "/usr/bin/localedef",       "-c", "-i", m_directory.write("comma", source), "-f", "UTF-8",
        m_directory / "comma.UTF-8"};
    run_program(start);
    m_holds = std::setlocale(LC_ALL, "comma.UTF-8") != nullptr;
}

CommaLocale::~CommaLocale() {
    std::setlocale(LC_ALL, m_previous.c_str());
}
