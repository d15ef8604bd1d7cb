#include "gen_path_library.h"

#include "fio_type.h"
#include "gen_iterator_sys.h"
#include "gen_owned.h"
#include "gen_path_install.h"
#include "gen_string_compare.h"

namespace {

constexpr FIO_FILE_TYPE preferred_file_types[] = {
    FIO_FILE_TYPE_BLOCK_DIAGRAM, FIO_FILE_TYPE_SCHEMATIC, FIO_FILE_TYPE_HDL,
    FIO_FILE_TYPE_VHDL,          FIO_FILE_TYPE_VERILOG,   FIO_FILE_TYPE_SYSTEM_VERILOG,
    FIO_FILE_TYPE_EDIF,
};

MEM_LIST<FIO_PATH> const* directories_of(FIO_FIND const* find) {
    return find != nullptr ? &find->directories() : nullptr;
}

/// The entry is that extension, one leading dot of the entry and letter case aside.
bool is_extension(STR const& entry, STR const& ext) {
    return gen_stricmp(entry.c_str() + (entry.starts_with('.') ? 1 : 0), ext.c_str()) == 0;
}

} // namespace

void gen_set_fio_find_library_paths_helper(STR const& paths, FIO_FIND** slot) {
    if (slot == nullptr)
        return;
    if (*slot == nullptr)
        // Its operator new takes tracked memory, so that gen_release_owned releases this one, too.
        *slot = new FIO_FIND(paths);
    else
        (*slot)->init(paths);
}

void gen_set_project_library_paths(STR paths) {
    gen_project_library_paths = std::move(paths);
    gen_set_fio_find_library_paths_helper(gen_project_library_paths, &gen_project_libraries);
}

STR gen_get_project_library_paths() {
    return gen_project_library_paths;
}

void gen_set_user_library_paths(STR paths) {
    gen_user_library_paths = std::move(paths);
    gen_set_fio_find_library_paths_helper(gen_user_library_paths, &gen_ini_user_libraries);
}

STR gen_get_user_library_paths() {
    return gen_user_library_paths;
}

void gen_init_korvane_lib_paths() {
    if (gen_korvane_libraries != nullptr || gen_korvane_eda_libraries != nullptr)
        return;
    MEM_LIST<FIO_PATH> shipped;
    MEM_LIST<FIO_PATH> eda;
    GEN_ENUM_ITERATOR<GEN_LIBRARY_TYPE> type(GEN_LIB_LIBRARIES,
                                             static_cast<GEN_LIBRARY_TYPE>(GEN_LIB_SIZE - 1));
    for (; !type.at_end(); ++type)
        (gen_lib_is_for_eda_use_only(*type) ? eda : shipped)
            .emplace_back(gen_get_library_path(*type));
    gen_korvane_libraries = gen_make_owned<FIO_FIND>(shipped);
    gen_korvane_eda_libraries = gen_make_owned<FIO_FIND>(eda);
}

FIO_FIND* gen_get_korvane_lib_paths() {
    gen_init_korvane_lib_paths();
    return gen_korvane_libraries;
}

FIO_FIND* gen_get_korvane_eda_lib_paths() {
    gen_init_korvane_lib_paths();
    return gen_korvane_eda_libraries;
}

MEM_LIST<FIO_PATH> const* gen_get_default_lib_fio_paths() {
    return directories_of(gen_get_korvane_lib_paths());
}

MEM_LIST<FIO_PATH> const* gen_project_lib_fio_paths() {
    return directories_of(gen_project_libraries);
}

MEM_VECTOR<STR>* gen_get_file_type_order_helper() {
    if (gen_file_type_order == nullptr) {
        gen_file_type_order = gen_make_owned<MEM_VECTOR<STR>>();
        for (FIO_FILE_TYPE const type : preferred_file_types)
            gen_file_type_order->emplace_back(fio_get_default_extension_string(type));
    }
    return gen_file_type_order;
}

void gen_remove_file_type_order_helper(MEM_VECTOR<STR>* order, STR const& ext) {
    if (order == nullptr)
        return;
    STR const removed = ext; // ext may be an entry of the order
    std::erase_if(*order, [&removed](STR const& entry) { return is_extension(entry, removed); });
}
