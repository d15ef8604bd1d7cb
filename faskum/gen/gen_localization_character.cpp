#include "gen_localization_character.h"

#include "gen_localization_base.h"
#include "gen_string_fold.h"

#include <climits>
#include <ctype.h>
#include <wctype.h>

namespace {

/// The platform's tables answer for these values alone, and are read without a check.
bool in_character_table(int c) {
    return c >= SCHAR_MIN && c <= UCHAR_MAX;
}

} // namespace

#define DEFINE_NARROW_CLASS(classify)                                                              \
    int gen_local_##classify(int c) {                                                              \
        if (!in_character_table(c))                                                                \
            return 0;                                                                              \
        locale_t const base = base_locale().character;                                             \
        return base != nullptr ? classify##_l(c, base) : classify(c);                              \
    }

DEFINE_NARROW_CLASS(isalnum)
DEFINE_NARROW_CLASS(isalpha)
DEFINE_NARROW_CLASS(iscntrl)
DEFINE_NARROW_CLASS(isgraph)
DEFINE_NARROW_CLASS(islower)
DEFINE_NARROW_CLASS(isprint)
DEFINE_NARROW_CLASS(ispunct)
DEFINE_NARROW_CLASS(isspace)
DEFINE_NARROW_CLASS(isupper)
DEFINE_NARROW_CLASS(isxdigit)

#undef DEFINE_NARROW_CLASS

int gen_local_isascii(int c) {
    return isascii(c);
}

int gen_local_iscsym(int /*c*/) {
    report_neutrally(LC_CTYPE, reports::no_iscsym);
    return 0;
}

int gen_local_iscsymf(int /*c*/) {
    report_neutrally(LC_CTYPE, reports::no_iscsymf);
    return 0;
}

int gen_local_isleadbyte(int c) {
    return c & 0x8000;
}

#define DEFINE_WIDE_CLASS(classify)                                                                \
    int gen_local_##classify(unsigned c) {                                                         \
        locale_t const base = base_locale().character;                                             \
        return base != nullptr ? classify##_l(c, base) : classify(c);                              \
    }

DEFINE_WIDE_CLASS(iswalnum)
DEFINE_WIDE_CLASS(iswalpha)
DEFINE_WIDE_CLASS(iswcntrl)
DEFINE_WIDE_CLASS(iswdigit)
DEFINE_WIDE_CLASS(iswgraph)
DEFINE_WIDE_CLASS(iswlower)
DEFINE_WIDE_CLASS(iswprint)
DEFINE_WIDE_CLASS(iswpunct)
DEFINE_WIDE_CLASS(iswspace)
DEFINE_WIDE_CLASS(iswupper)
DEFINE_WIDE_CLASS(iswxdigit)

#undef DEFINE_WIDE_CLASS

int gen_local_iswascii(unsigned c) {
    return isascii(static_cast<int>(c));
}

int gen_local_iswctype(unsigned c, unsigned long description) {
    // A description carries the locale that it was asked in: the one in force now has no say.
    return iswctype(c, description);
}

// Unlike tolower_l and toupper_l, tolower and toupper look at the range themselves.
int gen_local_tolower(int c) {
    locale_t const base = base_locale().character;
    return base != nullptr && in_character_table(c) ? tolower_l(c, base) : tolower(c);
}

int gen_local_toupper(int c) {
    locale_t const base = base_locale().character;
    return base != nullptr && in_character_table(c) ? toupper_l(c, base) : toupper(c);
}

unsigned gen_local_towlower(unsigned c) {
    locale_t const base = base_locale().character;
    return base != nullptr ? towlower_l(c, base) : towlower(c);
}

unsigned gen_local_towupper(unsigned c) {
    locale_t const base = base_locale().character;
    return base != nullptr ? towupper_l(c, base) : towupper(c);
}

char* gen_local_strlwr(char* string) {
    BaseCharacterScope const scope;
    return gen_strlwr(string);
}

char* gen_local_strupr(char* string) {
    BaseCharacterScope const scope;
    return gen_strupr(string);
}
