#pragma once

/// Values on their way between Python and the C interface: how arguments of each type are taken and
/// results given.

#define PY_SSIZE_T_CLEAN
#include "gen_c.h"

#include <Python.h>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace korvane {

class Signature;

/// Which argument of which function, for whoever reads the exception.
struct Site {
    Signature const& signature;
    std::size_t argument;

    bool may_be_none() const;
    /// Raises with "function() argument 'name' " in front of the text; gives false.
    bool raise(PyObject* exception, char const* text) const;
};

/// Text of the library as Python's, as os.fsdecode makes it.
inline PyObject* decoded(char const* bytes, std::size_t size) {
    return PyUnicode_DecodeFSDefaultAndSize(bytes, static_cast<Py_ssize_t>(size));
}

/// One row of a table, and the table as a list of dictionaries.
PyObject* rows_of(gen_c_table const* table);

/// The path of a text, which is taken over.
PyObject* path_of(PyObject* text);

/// The internal errors of the last call that may report any, as a list of (condition, source,
/// line).
PyObject* reports();

/// Raises them, with what the library has answered all the same, which is taken over. Gives null; a
/// null answer has raised already.
PyObject* raise_internal_error(PyObject* answer);

/// Raises what any other status stands for.
void raise_status(char const* function, gen_c_status status);

/// The same, unless it stands for an answer.
inline bool refused(char const* function, gen_c_status status) {
    if (status <= GEN_C_DIAGNOSED) [[likely]]
        return false;
    raise_status(function, status);
    return true;
}

/// Looks up what the functions here need of Python. False, with an exception, without it.
bool prepare();

/// What the C interface takes and gives by pointer, and Python keeps as a capsule.
template <typename T>
struct Handle {
    static constexpr char const* name = nullptr;
};
template <>
struct Handle<gen_c_undo> {
    static constexpr char const* name = "gen_c_undo";
    static constexpr auto free = gen_c_undo_free;
};
template <>
struct Handle<gen_c_flags> {
    static constexpr char const* name = "gen_c_flags";
    static constexpr auto free = gen_c_flags_free;
};
template <>
struct Handle<gen_c_histogram> {
    static constexpr char const* name = "gen_c_histogram";
    static constexpr auto free = gen_c_histogram_free;
};
template <>
struct Handle<gen_c_stopwatch> {
    static constexpr char const* name = "gen_c_stopwatch";
    static constexpr auto free = gen_c_stopwatch_free;
};

// Arguments. take() gives false with an exception.

/// A text or a path, as os.fsencode makes it, without a copy where it is ASCII; None is null
/// where that is allowed.
class Text {
  public:
    static constexpr bool is_argument = true;

    Text() = default;
    Text(Text const&) = delete;
    Text& operator=(Text const&) = delete;
    ~Text() { Py_XDECREF(m_owned); }

    // Inline without fail: a call here is a tenth of a natural comparison.
    [[gnu::always_inline]] bool take(PyObject* object, Site const& site) {
        if (PyUnicode_Check(object) && PyUnicode_IS_COMPACT_ASCII(object)) [[likely]] {
            m_bytes = static_cast<char const*>(PyUnicode_DATA(object));
            return has_no_nul(static_cast<std::size_t>(PyUnicode_GET_LENGTH(object)), site);
        }
        return take_any(object, site);
    }
    char const* bytes() const { return m_bytes; }
    char const* pass() const { return m_bytes; }

  private:
    bool take_any(PyObject* object, Site const& site);
    bool has_no_nul(std::size_t size, Site const& site) const {
        if (std::char_traits<char>::length(m_bytes) == size) [[likely]]
            return true;
        return site.raise(PyExc_ValueError, "contains a null character");
    }

    PyObject* m_owned = nullptr; ///< the bytes, where they are not the object's own
    char const* m_bytes = nullptr;
};

/// An integer that fits.
template <typename T>
class Integer {
  public:
    static constexpr bool is_argument = true;

    bool take(PyObject* object, Site const& site) {
        if (!PyLong_Check(object))
            return site.raise(PyExc_TypeError, "must be an integer");
        int overflow = 0;
        long long const value = PyLong_AsLongLongAndOverflow(object, &overflow);
        if (overflow != 0 || value < std::numeric_limits<T>::min() ||
            value > std::numeric_limits<T>::max())
            return site.raise(PyExc_OverflowError, "does not fit 32 bits");
        m_value = static_cast<T>(value);
        return true;
    }
    T pass() const { return m_value; }

  private:
    T m_value = 0;
};

/// A number.
class Real {
  public:
    static constexpr bool is_argument = true;

    bool take(PyObject* object, Site const& site) {
        if (!PyFloat_Check(object) && !PyLong_Check(object))
            return site.raise(PyExc_TypeError, "must be a number");
        m_value = PyFloat_AsDouble(object);
        if (PyErr_Occurred() == nullptr)
            return true;
        PyErr_Clear(); // an integer beyond all doubles
        return site.raise(PyExc_OverflowError, "does not fit 64 bits");
    }
    double pass() const { return m_value; }

  private:
    double m_value = 0;
};

/// What a function that creates it has given.
template <typename T>
class Given {
  public:
    static constexpr bool is_argument = true;

    bool take(PyObject* object, Site const& site) {
        if (!PyCapsule_IsValid(object, Handle<T>::name))
            return site.raise(PyExc_TypeError, "is not what the module gave");
        m_handle = static_cast<T*>(PyCapsule_GetPointer(object, Handle<T>::name));
        return true;
    }
    T* pass() const { return m_handle; }

  private:
    T* m_handle = nullptr;
};

// Results. object() gives a new reference, null with an exception.

/// A text. Its memory is kept for the next call, as long as that is little; the interpreter's lock
/// keeps it to one thread.
template <bool IsPath>
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
    PyObject* object() const {
        PyObject* const text = decoded(m_text.bytes, m_text.size);
        return IsPath && text != nullptr ? path_of(text) : text;
    }

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
    PyObject* object() const { return rows_of(m_table); }
    bool is_given() const { return m_table != nullptr; }

  private:
    gen_c_table* m_table = nullptr;
};

/// A number of any kind.
template <typename T>
class NumberResult {
  public:
    static constexpr bool is_argument = false;

    T* pass() { return &m_value; }
    PyObject* object() const {
        if constexpr (std::is_floating_point_v<T>)
            return PyFloat_FromDouble(m_value);
        else
            return PyLong_FromLongLong(static_cast<long long>(m_value));
    }

  private:
    T m_value = 0;
};

/// What has to be freed once Python has no use for it any longer.
template <typename T>
class HandleResult {
  public:
    static constexpr bool is_argument = false;

    T** pass() { return &m_handle; }
    PyObject* object() const {
        PyObject* const capsule = PyCapsule_New(m_handle, Handle<T>::name, free);
        if (capsule == nullptr)
            Handle<T>::free(m_handle);
        return capsule;
    }

  private:
    static void free(PyObject* capsule) {
        Handle<T>::free(static_cast<T*>(PyCapsule_GetPointer(capsule, Handle<T>::name)));
    }

    T* m_handle = nullptr;
};

/// What stands between Python and a parameter of that type. Of the C interface's own objects, a
/// pointer is one that was given before, and the address of a pointer gives a new one.
template <typename Parameter, bool IsPath>
auto converter() {
    using Target = std::remove_cv_t<std::remove_pointer_t<Parameter>>;
    if constexpr (std::is_same_v<Parameter, char const*>)
        return std::type_identity<Text>();
    else if constexpr (std::is_integral_v<Parameter>)
        return std::type_identity<Integer<Parameter>>();
    else if constexpr (std::is_floating_point_v<Parameter>)
        return std::type_identity<Real>();
    else if constexpr (std::is_same_v<Parameter, gen_c_text*>)
        return std::type_identity<TextResult<IsPath>>();
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
