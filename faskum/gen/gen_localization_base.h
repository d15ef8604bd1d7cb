#pragma once

/// The locale that LOCALIZATION_BASE_STRING names, kept from call to call.
///
/// Switching the process's locale to and fro costs hundreds of nanoseconds under a foreign locale
/// and is seen by every other thread. A locale object of our own is neither.

#include "gen_localization.h"
#include "gen_report.h"
#include "mem_alloc_sys.h"

#include <atomic>
#include <locale.h>

/// The locale in force, with the time category of a base name.
struct BaseTimeLocale {
    /// Null where setlocale would have refused the base name.
    locale_t locale = nullptr;
    /// The character category that was in force.
    STR character_name;
};

struct BaseLocale {
    // Each has its one category of the base name, and the "C" locale besides. Null where
    // setlocale would have refused the name: then the locale in force is the answer.
    locale_t character = nullptr;
    locale_t numeric = nullptr;
    /// The decimal point of the numeric category, '\0' where it is none or more than one byte.
    char decimal_point = '\0';
    STR name;
    /// What the environment made of the name, when that is empty.
    STR environment;
    MEM_LIST<BaseTimeLocale> times;
};

extern std::atomic<BaseLocale const*> current_base_locale;

/// Frees every locale that was kept, when gen is unloaded.
void release_base_locales();

/// Finds or makes the base locale for LOCALIZATION_BASE_STRING and makes it the current one.
/// Leaves errno alone.
BaseLocale const& switch_base_locale();

/// The base locale for what LOCALIZATION_BASE_STRING says now, or null where it is not the current
/// one; valid until gen is unloaded.
inline BaseLocale const* known_base_locale() {
    BaseLocale const* const current = current_base_locale.load(std::memory_order_acquire);
    char const* wanted = LOCALIZATION_BASE_STRING;
    if (current == nullptr || wanted == nullptr) [[unlikely]]
        return nullptr;
    // The strings are compared, since a host may rewrite the one it points us at. They are a
    // character or two long: with a call of strcmp in place of the loop, gen_local_isalpha takes
    // 1.7 times as long on 32-bit (scripts/bench 'gen_local_isalpha.*').
    char const* kept = current->name.c_str();
    while (*kept == *wanted) {
        if (*kept == '\0')
            return current;
        // MUTANT_EXCL_LINE(without): the name would be looked for among all
        ++kept;
        ++wanted; // MUTANT_EXCL_LINE(without): likewise
    }
    return nullptr;
}

/// The same, made the current one where it is not.
inline BaseLocale const& base_locale() {
    BaseLocale const* const known = known_base_locale();
    return known != nullptr ? *known : switch_base_locale();
}

/// The locale in force with the time category of the base name, valid until gen is unloaded; null
/// where the locale in force is the answer. Time formats may ask for capitals, and which those are
/// is for the user's character category to say.
locale_t base_time_locale();

/// Has the C library load what converts the characters of the locale in force, which it would
/// otherwise do at the first conversion, and without memory take those of the "C" locale for good.
void load_conversions();

/// Puts this thread into the base locale's character category until the end of the scope: for the
/// functions that exist in no form that takes a locale. They ask no other category.
class BaseCharacterScope {
  public:
    BaseCharacterScope() {
        if (locale_t const character = base_locale().character)
            m_previous = uselocale(character);
    }
    ~BaseCharacterScope() {
        if (m_previous != nullptr)
            uselocale(m_previous);
    }
    BaseCharacterScope(BaseCharacterScope const&) = delete;
    BaseCharacterScope& operator=(BaseCharacterScope const&) = delete;

  private:
    locale_t m_previous = nullptr;
};

/// Reports an internal error of this family. Whoever handles the report finds the process's
/// locale switched to LOCALIZATION_BASE_STRING in @p category, which is the member's own, as if the
/// whole member ran under it.
void report_neutrally(int category, Report const& error);

/// Reports a null string of a number and answers for it: nothing was read.
template <typename Char>
bool is_missing(Char const* text, Char** end) {
    if (text != nullptr)
        return false;
    report_neutrally(LC_NUMERIC, reports::no_number_text);
    if (end != nullptr)
        *end = nullptr;
    return true;
}
