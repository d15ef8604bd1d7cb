#pragma once

/// What every call of the C interface does: look at its arguments, listen for internal errors, and
/// write its results.
///
/// Strings and containers of tracked memory end the process where there is none. A call that needs
/// those of the standard library catches std::bad_alloc and gives GEN_C_NO_MEMORY.

#include "err_report.h"
#include "gen_c.h"
#include "mem_alloc_sys.h"

#include <string_view>

namespace gen_c {

/// Keeps @p reason for gen_c_reason and gives @p status.
gen_c_status refuse(gen_c_status status, std::string_view argument, std::string_view reason);

/// True, with a reason, when the argument of that name is null.
inline bool lacks(char const* name, void const* argument) {
    if (argument != nullptr) [[likely]]
        return false;
    refuse(GEN_C_BAD_ARGUMENT, name, " is null");
    return true;
}

/// True, with a reason, before the start: gen would end the process.
bool is_not_started();

/// Keeps the internal errors of its scope for gen_c_report.
class Reports {
  public:
    Reports();
    ~Reports();
    Reports(Reports const&) = delete;
    Reports& operator=(Reports const&) = delete;

    /// @p status, but for an answer without diagnostics with which gen has reported something.
    gen_c_status status(gen_c_status status = GEN_C_OK) const;

  private:
    ERR_HANDLER m_previous;
};

/// Replaces the text.
gen_c_status put(gen_c_text* text, std::string_view value);

/// Replaces both texts, or neither where memory is missing for one of them.
gen_c_status put_both(gen_c_text* first, std::string_view first_value, gen_c_text* second,
                      std::string_view second_value);

/// The same, and GEN_C_NOT_FOUND for an empty one, which is not written.
inline gen_c_status put_found(gen_c_text* text, std::string_view value) {
    return value.empty() ? GEN_C_NOT_FOUND : put(text, value);
}

} // namespace gen_c
