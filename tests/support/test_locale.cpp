#include "test_locale.h"

#include "run_program.h"

#include <clocale>

TestLocale::TestLocale()
    : m_path("LOCPATH", m_directory.path().c_str()), m_previous(std::setlocale(LC_ALL, nullptr)) {
    // Forced, because the source leaves out categories that nobody here asks.
    std::string const source = std::string(TEST_SOURCE_DIR "/data/locale/") + name;
    ProgramStart start;
    start.arguments = {"/usr/bin/localedef", "--force",         "-i", source, "-f",
                       "ISO-8859-1",         m_directory / name};
    ProgramResult const made = run_program(start);
    if (made.status == 127)
        m_trouble = "/usr/bin/localedef is not installed";
    else if (std::setlocale(LC_NUMERIC, name) == nullptr)
        m_trouble = "localedef could not make the test locale: " + made.errors;
    std::setlocale(LC_ALL, m_previous.c_str());
}

TestLocale::~TestLocale() {
    std::setlocale(LC_ALL, m_previous.c_str());
}
