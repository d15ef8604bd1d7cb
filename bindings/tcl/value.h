#pragma once

/// Values on their way between Tcl and the C interface: how arguments of each type are taken and
/// results given.

#include "gen_c.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <tcl.h>
#include <type_traits>
#include <utility>

namespace korvane {

/// Leaves "argument "name" complaint" as the result, and {KORVANE ARGUMENT name} as the error code;
/// gives false.
bool complain(Tcl_Interp* interp, std::string_view argument, std::string const& complaint);

/// The internal errors of the last call that may report any, as a list of dictionaries.
Tcl_Obj* reports();

/// Leaves the error of them, with what the library has answered all the same.
int raise_internal_error(Tcl_Interp* interp, Tcl_Obj* answer);

/// Leaves the error that any other status stands for.
int raise_status(Tcl_Interp* interp, gen_c_status status);

/// A text of the library as Tcl's: in the system encoding, and where that is UTF-8, a byte that is
/// none as one of the characters U+DC80 to U+DCFF, so that it comes back as it was.
Tcl_Obj* object_of(char const* bytes, std::size_t size);

/// A list of dictionaries; what is not known is empty.
Tcl_Obj* rows_of(gen_c_table const* table);

/// Eight bytes at a time, since every text that passes is looked through.
inline bool is_ascii(std::string_view text) {
    constexpr std::uint64_t high_bits = 0x8080808080808080;
    std::uint64_t seen = 0;
    for (; text.size() >= sizeof seen; text.remove_prefix(sizeof seen)) {
        std::uint64_t bytes;
        std::memcpy(&bytes, text.data(), sizeof bytes);
        seen |= bytes;
    }
    for (char const byte : text)
        seen |= static_cast<unsigned char>(byte);
    return (seen & high_bits) == 0;
}

// Arguments.

/// A text in the system encoding, without a copy where it is ASCII.
class Text {
  public:
    static constexpr bool is_argument = true;

    bool take(Tcl_Interp* interp, Tcl_Obj* object, std::string_view argument) {
        int size = 0;
        m_bytes = Tcl_GetStringFromObj(object, &size);
        // A null character has two bytes there, neither of them ASCII.
        std::string_view const text(m_bytes, static_cast<std::size_t>(size));
        return is_ascii(text) || take_any(interp, text, argument);
    }
    char const* pass() const { return m_bytes; }

  private:
    bool take_any(Tcl_Interp* interp, std::string_view text, std::string_view argument);

    std::string m_encoded;
    char const* m_bytes = nullptr; ///< null where it was left out
};

/// An integer that fits.
template <typename T>
class Integer {
  public:
    static constexpr bool is_argument = true;

    bool take(Tcl_Interp* interp, Tcl_Obj* object, std::string_view argument) {
        Tcl_WideInt value = 0;
        if (Tcl_GetWideIntFromObj(nullptr, object, &value) != TCL_OK)
            return complain(interp, argument, "is no integer");
        double magnitude = 0; // from 2^63 to 2^64 the integer comes as a negative one
        Tcl_GetDoubleFromObj(nullptr, object, &magnitude);
        if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max() ||
            (value < 0 && magnitude > 0))
            return complain(interp, argument, "does not fit 32 bits");
        m_value = static_cast<T>(value);
        return true;
    }
    T pass() const { return m_value; }

  private:
    T m_value = 0;
};

/// A number, or NaN.
class Real {
  public:
    static constexpr bool is_argument = true;

    bool take(Tcl_Interp* interp, Tcl_Obj* object, std::string_view argument) {
        return Tcl_GetDoubleFromObj(nullptr, object, &m_value) == TCL_OK || take_nan(object) ||
               complain(interp, argument, "is no number");
    }
    double pass() const { return m_value; }

  private:
    /// Which Tcl itself does not let pass.
    bool take_nan(Tcl_Obj* object) {
        char* end = nullptr;
        m_value = std::strtod(Tcl_GetString(object), &end);
        return std::isnan(m_value) && *end == '\0';
    }

    double m_value = 0;
};

/// What the process has of one kind, by the names under which Tcl knows it: no string of a script
/// is ever taken for a pointer.
template <typename T>
inline std::map<std::string, T*, std::less<>> handles;

/// What a function that creates it has given.
template <typename T>
class Given {
  public:
    static constexpr bool is_argument = true;

    bool take(Tcl_Interp* interp, Tcl_Obj* object, std::string_view argument) {
        auto const found = handles<T>.find(std::string_view(Tcl_GetString(object)));
        if (found == handles<T>.end())
            return complain(interp, argument, "is not what the package gave");
        m_handle = found->second;
        return true;
    }
    T* pass() const { return m_handle; }

  private:
    T* m_handle = nullptr;
};

// Results.

/// A text. Its memory is kept for the next call, as long as that is little.
class TextResult {
  public:
    static constexpr bool is_argument = false;

    TextResult() = default;
    TextResult(TextResult const&) = delete;
    TextResult& operator=(TextResult const&) = delete;
    ~TextResult() {
        constexpr std::size_t little = 1 << 16;
        if (m_text.room > little)
            gen_c_text_free(&m_text);
        else
            // Of two results of one call, the memory of the one that ends last is kept.
            std::swap(m_text, s_kept);
        gen_c_text_free(&m_text);
    }

    gen_c_text* pass() { return &m_text; }
    Tcl_Obj* object() const { return object_of(m_text.bytes, m_text.size); }

  private:
    static inline gen_c_text s_kept = GEN_C_TEXT_INIT;

    gen_c_text m_text = std::exchange(s_kept, GEN_C_TEXT_INIT);
};

/// A table.
class TableResult {
  public:
    static constexpr bool is_argument = false;

    TableResult() = default;
    TableResult(TableResult const&) = delete;
    TableResult& operator=(TableResult const&) = delete;
    ~TableResult() { gen_c_table_free(m_table); }

    gen_c_table** pass() { return &m_table; }
    Tcl_Obj* object() const { return rows_of(m_table); }

  private:
    gen_c_table* m_table = nullptr;
};

/// A number of any kind.
template <typename T>
class NumberResult {
  public:
    static constexpr bool is_argument = false;

    T* pass() { return &m_value; }
    Tcl_Obj* object() const {
        if constexpr (std::is_floating_point_v<T>)
            return Tcl_NewDoubleObj(m_value);
        else
            return Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(m_value));
    }

  private:
    T m_value = 0;
};

/// What Tcl gets a name for; it lives until it is freed by that name.
template <typename T>
class HandleResult {
  public:
    static constexpr bool is_argument = false;

    T** pass() { return &m_handle; }
    Tcl_Obj* object() const {
        static unsigned long count = 0;
        std::string const name = "handle" + std::to_string(++count);
        handles<T>[name] = m_handle;
        return object_of(name.data(), name.size());
    }

  private:
    T* m_handle = nullptr;
};

/// What stands between Tcl and a parameter of that type. Of the C interface's own objects, a
/// pointer is one that was given before, and the address of a pointer gives a new one.
template <typename Parameter>
auto converter() {
    using Target = std::remove_cv_t<std::remove_pointer_t<Parameter>>;
    if constexpr (std::is_same_v<Parameter, char const*>)
        return std::type_identity<Text>();
    else if constexpr (std::is_integral_v<Parameter>)
        return std::type_identity<Integer<Parameter>>();
    else if constexpr (std::is_floating_point_v<Parameter>)
        return std::type_identity<Real>();
    else if constexpr (std::is_same_v<Parameter, gen_c_text*>)
        return std::type_identity<TextResult>();
    else if constexpr (std::is_same_v<Parameter, gen_c_table**>)
        return std::type_identity<TableResult>();
    else if constexpr (std::is_arithmetic_v<Target>)
        return std::type_identity<NumberResult<Target>>();
    else if constexpr (std::is_pointer_v<Target>)
        return std::type_identity<HandleResult<std::remove_pointer_t<Target>>>();
    else
        return std::type_identity<Given<Target>>();
}

} // namespace korvane
