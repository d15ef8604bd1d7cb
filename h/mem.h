#pragma once

/// The memory library: owners, configuration switches, the debug-message channel, the process's
/// size, and the query functions that gen leaves here at start-up. Tracked allocation itself is in
/// mem_manager.h, the containers over it in mem_alloc_sys.h.

#include "korvane_export.h"
#include "mem_alloc_sys.h"
#include "mem_manager.h"

/// Registers @p owner as an owner of tracked memory from construction to destruction. A library
/// holds one such object for as long as it is loaded. The string is not copied: it must outlive the
/// object. A null owner registers nothing.
class KORVANE_API MEM_INITIALIZER {
  public:
    /// Registers the owner.
    explicit MEM_INITIALIZER(char const* owner);
    /// Takes it off the register.
    ~MEM_INITIALIZER();
    MEM_INITIALIZER(MEM_INITIALIZER const&) = delete;
    MEM_INITIALIZER& operator=(MEM_INITIALIZER const&) = delete;

  private:
    friend KORVANE_API bool mem_is_registered_owner(char const* owner);

    static MEM_INITIALIZER* s_newest;

    char const* m_owner;
    MEM_INITIALIZER* m_next; // the next older one
};

/// True while a MEM_INITIALIZER of that owner lives; false for null.
KORVANE_API bool mem_is_registered_owner(char const* owner);

/// A configuration switch: what mem_cfg_set said last, else what the environment variable
/// "KORVANE_CFG" says (comma-separated, `name` or `name=on` or `name=off`, blanks around a mention
/// ignored, the last mention counts), else @p by_default. A mention with any other value says
/// nothing. The variable is read anew by every call. A null or empty name gives @p by_default.
KORVANE_API bool mem_cfg_is_on(char const* name, bool by_default);
/// Sets a switch for this process, whatever the environment says. A null or empty name is ignored.
KORVANE_API void mem_cfg_set(char const* name, bool on);
/// Forgets what mem_cfg_set said of that switch.
KORVANE_API void mem_cfg_unset(char const* name);

/// Receives one debug message, without a line end of its own. What it returns is passed on to the
/// writer of the message.
using MEM_MSG_SINK = int (*)(char const* owner, char const* text);

/// Expands a printf-style message and hands it to the sink in force.
/// @param args the arguments as STL_ARGS of stl.h gives them; null where there are none
/// @return what the sink returned; the default sink writes one line to standard error and returns
///         the number of characters of that line
/// A null owner or format counts as an empty one.
KORVANE_API int mem_msg_local_vdebug(char* owner, char const* format, char* args);
/// Installs @p sink and returns the one it replaces. Null restores the default sink, which is
/// itself returned as null.
KORVANE_API MEM_MSG_SINK mem_msg_set_sink(MEM_MSG_SINK sink);

/// Resident bytes of the process now, and at most so far; 0 where the kernel does not report them.
KORVANE_API unsigned long mem_info_get_working_set_size();
KORVANE_API unsigned long mem_info_get_working_set_peak_size();

/// gen is above this library, so it leaves its answers here as functions to call, from its start-up
/// until it is unloaded. Null forgets one.
KORVANE_API void mem_set_gen_get_korvane_path_callback(STR (*callback)());
KORVANE_API void mem_set_gen_get_module_filename_callback(STR (*callback)());
KORVANE_API void mem_set_gen_get_db_dir_path_string_callback(STR (*callback)());
KORVANE_API void mem_set_gen_is_in_ui_process_callback(bool (*callback)());
KORVANE_API void mem_set_gen_get_project_output_directory_callback(char const* (*callback)());

/// What gen answers through them; empty text, false or null as long as nothing is registered.
KORVANE_API STR mem_gen_get_korvane_path();
KORVANE_API STR mem_gen_get_module_filename();
KORVANE_API STR mem_gen_get_db_dir_path_string();
KORVANE_API bool mem_gen_is_in_ui_process();
/// As the above. The text belongs to gen and stays valid until gen's project or output directory
/// changes.
KORVANE_API char const* mem_gen_get_project_output_directory();
