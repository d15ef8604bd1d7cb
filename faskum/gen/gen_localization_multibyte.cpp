#include "gen_localization_multibyte.h"

#include "gen_localization_base.h"

#include <cstdlib>

namespace {

constexpr unsigned conversion_failed = ~0U;

} // namespace

int gen_local_mblen(char const* string, unsigned count) {
    BaseCharacterScope const scope;
    return std::mblen(string, count);
}

int gen_local_mbtowc(wchar_t* wide, char const* string, unsigned count) {
    BaseCharacterScope const scope;
    return std::mbtowc(wide, string, count);
}

int gen_local_wctomb(char* string, wchar_t wide) {
    BaseCharacterScope const scope;
    return std::wctomb(string, wide);
}

unsigned gen_local_mbstowcs(wchar_t* wide, char const* string, unsigned count) {
    if (string == nullptr) {
        report_neutrally(LC_CTYPE, reports::no_multibyte_string);
        return conversion_failed;
    }
    BaseCharacterScope const scope;
    return static_cast<unsigned>(std::mbstowcs(wide, string, count));
}

unsigned gen_local_wcstombs(char* string, wchar_t const* wide, unsigned count) {
    if (wide == nullptr) {
        report_neutrally(LC_CTYPE, reports::no_wide_string);
        return conversion_failed;
    }
    BaseCharacterScope const scope;
    return static_cast<unsigned>(std::wcstombs(string, wide, count));
}

void gen_local_mbccpy(unsigned char* /*to*/, unsigned char const* /*from*/) {
    report_neutrally(LC_CTYPE, reports::no_mbccpy);
}

unsigned gen_local_mbclen(unsigned char const* /*character*/) {
    report_neutrally(LC_CTYPE, reports::no_mbclen);
    return 0;
}
