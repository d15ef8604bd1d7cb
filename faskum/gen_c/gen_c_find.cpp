#include "gen_c_call.h"
#include "gen_path.h"

using namespace gen_c;

/// Lookups may need the installation root, and without a start gen would end the process.
template <typename Lookup>
static gen_c_status look_up(Lookup lookup, char const* name, gen_c_text* path) {
    if (lacks("name", name) || lacks("path", path))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    FIO_PATH const found = lookup(name);
    return put_found(path, static_cast<char const*>(found));
}

gen_c_status gen_c_find(char const* name, gen_c_text* path) {
    return look_up(gen_find_file, name, path);
}

gen_c_status gen_c_find_eda(char const* name, gen_c_text* path) {
    return look_up(gen_find_eda_file, name, path);
}

gen_c_status gen_c_find_cached(char const* name, gen_c_text* path) {
    return look_up(gen_find_file_cache_assisted, name, path);
}

gen_c_status gen_c_clear_cache(void) {
    gen_destroy_find_file_cache();
    return GEN_C_OK;
}

gen_c_status gen_c_cache_size(size_t* names) {
    if (lacks("names", names))
        return GEN_C_BAD_ARGUMENT;
    *names = gen_find_file_cache != nullptr ? gen_find_file_cache->size() : 0;
    return GEN_C_OK;
}

gen_c_status gen_c_include(char const* name, char const* from, char const* alias, gen_c_text* path,
                           gen_c_text* beside_alias) {
    if (lacks("name", name) || lacks("path", path) || lacks("beside_alias", beside_alias))
        return GEN_C_BAD_ARGUMENT;
    if (is_not_started())
        return GEN_C_NOT_STARTED;
    STR found;
    STR beside;
    if (!gen_find_include_file(name, from, alias, &found, &beside))
        return GEN_C_NOT_FOUND;
    return put_both(path, found, beside_alias, beside);
}
