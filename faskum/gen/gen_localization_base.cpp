#include "gen_localization_base.h"

#include "gen_memory_watch.h"
#include "gen_state.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <mutex>
#include <utility>
#include <wchar.h>

char const* LOCALIZATION_BASE_STRING = "C";

constinit std::atomic<BaseLocale const*> current_base_locale = nullptr;

namespace {

constinit std::mutex base_locales_mutex;

void release(locale_t locale) {
    if (locale != nullptr)
        freelocale(locale);
}

/// The C library forgets why a locale could not be had, and without memory none can.
void check_heap() {
    errno = ENOMEM;
    MEM_MANAGER::check_heap("GEN");
}

/// @p rest with one category of the locale @p name; null, with @p rest as it was, where setlocale
/// would have refused the name.
locale_t with_category(int category_mask, STR const& name, locale_t rest) {
    // newlocale would split a name that gives the categories one by one; setlocale refuses such a
    // name for a single category.
    if (name.find(';') != STR::npos)
        return nullptr;
    locale_t const locale = newlocale(category_mask, name.c_str(), rest);
    if (locale == nullptr)
        check_heap();
    return locale;
}

void fill_in(BaseLocale& base) {
    base.character = with_category(LC_CTYPE_MASK, base.name, nullptr);
    if (base.character != nullptr) {
        locale_t const previous = uselocale(base.character);
        load_conversions();
        uselocale(previous);
    }
    base.numeric = with_category(LC_NUMERIC_MASK, base.name, nullptr);
    if (base.numeric != nullptr) {
        char const* const point = nl_langinfo_l(RADIXCHAR, base.numeric);
        if (std::strlen(point) == 1)
            base.decimal_point = *point;
    }
}

// What setlocale takes for a category when its name is left to the environment.
char const* name_in_environment(char const* category) {
    for (char const* const variable : {"LC_ALL", category, "LANG"}) {
        char const* const name = std::getenv(variable);
        if (name != nullptr && *name != '\0')
            return name;
    }
    return "C"; // MUTANT_EXCL_LINE: is only compared with other names
}

STR names_in_environment() {
    STR names;
    for (char const* const category : {"LC_CTYPE", "LC_NUMERIC", "LC_TIME"}) {
        names += name_in_environment(category);
        names += ' '; // MUTANT_EXCL_LINE(' ' to '~'): no name has either
    }
    return names;
}

BaseLocale& find_base_locale(char const* name) {
    bool const is_empty = *name == '\0';
    STR environment = is_empty ? names_in_environment() : STR();
    auto base =
        std::find_if(base_locales.begin(), base_locales.end(), [&](BaseLocale const& known) {
            return known.name == name && known.environment == environment;
        });
    if (base == base_locales.end()) {
        base = base_locales.emplace(base);
        base->name = name;
        base->environment = std::move(environment);
        fill_in(*base);
    }
    if (!is_empty) // the environment has to be asked again at the next call
        // MUTANT_EXCL_LINE(without): it would be looked for again at each call
        current_base_locale.store(&*base, std::memory_order_release);
    return *base;
}

locale_t make_time_locale(STR const& name) {
    locale_t const in_force = duplocale(uselocale(nullptr));
    if (in_force == nullptr)
        return nullptr;
    locale_t const mixed = with_category(LC_TIME_MASK, name, in_force);
    if (mixed == nullptr)
        freelocale(in_force);
    return mixed;
}

void set_process_locale(int category, char const* name) {
    MemoryWatch const watch;
    std::setlocale(category, name);
}

} // namespace

void load_conversions() {
    MemoryWatch const watch;
    // Not a character of ASCII: those are converted without loading anything.
    static_cast<void>(btowc(UCHAR_MAX));
}

void release_base_locales() {
    std::lock_guard const lock(base_locales_mutex);
    current_base_locale.store(nullptr, std::memory_order_release);
    for (BaseLocale const& base : base_locales) {
        release(base.character);
        release(base.numeric);
        for (BaseTimeLocale const& time : base.times)
            release(time.locale);
    }
    base_locales.clear();
}

BaseLocale const& switch_base_locale() {
    char const* const name = LOCALIZATION_BASE_STRING;
    if (name == nullptr)
        return no_base_locale;
    MemoryWatch const watch;
    std::lock_guard const lock(base_locales_mutex);
    return find_base_locale(name);
}

locale_t base_time_locale() {
    char const* const name = LOCALIZATION_BASE_STRING;
    if (name == nullptr)
        return nullptr;
    MemoryWatch const watch;
    char const* const character_name = nl_langinfo(NL_LOCALE_NAME(LC_CTYPE));
    std::lock_guard const lock(base_locales_mutex);
    BaseLocale& base = find_base_locale(name);
    auto time =
        std::find_if(base.times.begin(), base.times.end(), [&](BaseTimeLocale const& known) {
            return known.character_name == character_name;
        });
    if (time == base.times.end())
        time = base.times.insert(time, BaseTimeLocale{make_time_locale(base.name), character_name});
    return time->locale;
}

void report_neutrally(int category, Report const& error) {
    // A copy: the next setlocale, which may be one of the handler, invalidates its string.
    STR const users = std::setlocale(category, nullptr);
    set_process_locale(category, LOCALIZATION_BASE_STRING);
    report(error);
    set_process_locale(category, users.c_str());
}
