#pragma once

/// A function of the C interface as a function of Python, made from the types of its parameters.

#include "_gen_value.h"

#include <array>
#include <tuple>
#include <utility>
#include <vector>

namespace korvane {

/// The parameters of a Python function by their names.
class Signature {
  public:
    /// @param function   its name in the module; messages have the one that users of the package
    /// know
    /// @param parameters names parted by blanks; one that ends in "?" may be left out, and be None,
    ///                   one that ends in "*" may be None
    void declare(char const* function, std::string_view parameters);

    char const* function() const { return m_function.c_str(); }
    std::string_view name(std::size_t parameter) const { return m_parameters[parameter].name; }
    bool may_be_none(std::size_t parameter) const { return m_parameters[parameter].may_be_none; }

    /// A call by position alone, with no argument missing or too many.
    bool fits(std::size_t count, PyObject* keywords) const {
        return keywords == nullptr && count >= m_required && count <= m_count;
    }
    /// Sorts what any call was given to the parameters; null stays for what was left out. False,
    /// with an exception, when they do not fit.
    bool bind(PyObject* const* arguments, std::size_t count, PyObject* keywords,
              PyObject** given) const;

  private:
    struct Parameter {
        std::string_view name;
        bool may_be_none = false;
    };

    bool bind_keyword(PyObject* name, PyObject* value, PyObject** given) const;

    std::string m_function;
    std::array<Parameter, 5> m_parameters;
    std::size_t m_count = 0;
    std::size_t m_required = 0;
};

/// Takes the objects over; null when one of them is, which has raised an exception.
PyObject* tuple_of(PyObject** objects, std::size_t count);

/// What the texts of a result become.
enum class As { text, path };

template <auto Function, As Kind, typename... Parameters>
class Call {
  public:
    static PyObject* call(PyObject*, PyObject* const* arguments, Py_ssize_t count,
                          PyObject* keywords) {
        auto const positional = static_cast<std::size_t>(count);
        if (s_signature.fits(positional, keywords)) [[likely]]
            return call_with(arguments, positional);
        PyObject* given[sizeof...(Parameters) + 1] = {};
        if (!s_signature.bind(arguments, positional, keywords, given))
            return nullptr;
        return call_with(given, sizeof...(Parameters));
    }

    static PyMethodDef entry(char const* name, char const* parameters, char const* doc) {
        s_signature.declare(name, parameters);
        // A keyword call has one parameter more than the type says; the flags say which.
        return {name, reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(call)),
                METH_FASTCALL | METH_KEYWORDS, doc};
    }

  private:
    template <typename One>
    using Converter = typename decltype(converter<One, Kind == As::path>())::type;
    using Converters = std::tuple<Converter<Parameters>...>;
    using Indices = std::index_sequence_for<Parameters...>;

    /// How many arguments stand before the parameter, and how many results there are.
    static constexpr std::size_t arguments_before(std::size_t parameter) {
        bool const is_argument[] = {Converter<Parameters>::is_argument..., false};
        std::size_t count = 0;
        for (std::size_t i = 0; i < parameter; ++i)
            count += is_argument[i] ? 1 : 0;
        return count;
    }
    static constexpr std::size_t results =
        sizeof...(Parameters) - arguments_before(sizeof...(Parameters));

    /// @param count how many of the arguments were given; of those, null ones were left out
    static PyObject* call_with(PyObject* const* given, std::size_t count) {
        Converters converters;
        if (!take(converters, given, count, Indices()))
            return nullptr;
        gen_c_status const status =
            std::apply([](auto&... each) { return Function(each.pass()...); }, converters);
        if (status == GEN_C_INTERNAL_ERROR) [[unlikely]]
            return raise_internal_error(result(converters, status, Indices()));
        if (refused(s_signature.function(), status))
            return nullptr;
        return result(converters, status, Indices());
    }

    template <std::size_t... I>
    static bool take([[maybe_unused]] Converters& converters,
                     [[maybe_unused]] PyObject* const* given, [[maybe_unused]] std::size_t count,
                     std::index_sequence<I...>) {
        return (take_one<I>(std::get<I>(converters), given, count) && ...);
    }

    template <std::size_t I, typename Each>
    static bool take_one(Each& converter, [[maybe_unused]] PyObject* const* given,
                         [[maybe_unused]] std::size_t count) {
        if constexpr (Each::is_argument) {
            constexpr std::size_t at = arguments_before(I);
            return at >= count || given[at] == nullptr ||
                   converter.take(given[at], {s_signature, at});
        }
        return true;
    }

    /// What the function gave: nothing is whether it was found, one result itself, more a tuple.
    /// Without an answer it is None; a table may be there all the same.
    template <std::size_t... I>
    static PyObject* result(Converters const& converters, gen_c_status status,
                            std::index_sequence<I...>) {
        if constexpr (results == 0) {
            return PyBool_FromLong(status == GEN_C_OK);
        } else {
            bool const is_given =
                status != GEN_C_NOT_FOUND || (has_table(std::get<I>(converters)) || ...);
            if (!is_given)
                Py_RETURN_NONE;
            PyObject* objects[results] = {};
            std::size_t count = 0;
            ((count += store(std::get<I>(converters), objects + count)), ...);
            if constexpr (results == 1)
                return objects[0];
            else
                return tuple_of(objects, results);
        }
    }

    template <typename Each>
    static bool has_table(Each const& converter) {
        if constexpr (std::is_same_v<Each, TableResult>)
            return converter.is_given();
        return false;
    }

    template <typename Each>
    static std::size_t store(Each const& converter, PyObject** object) {
        if constexpr (Each::is_argument) {
            return 0;
        } else {
            *object = converter.object();
            return 1;
        }
    }

    /// One for a function and what its texts become: the module's table has no two such entries.
    static inline Signature s_signature;
};

template <auto Function, As Kind, typename... Parameters>
PyMethodDef entry_of(gen_c_status (*)(Parameters...), char const* name, char const* parameters,
                     char const* doc) {
    return Call<Function, Kind, Parameters...>::entry(name, parameters, doc);
}

/// The entry of a function in the module's table.
template <auto Function, As Kind = As::text>
PyMethodDef entry(char const* name, char const* parameters, char const* doc = nullptr) {
    return entry_of<Function, Kind>(Function, name, parameters, doc);
}

} // namespace korvane
