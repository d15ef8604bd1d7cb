#pragma once

/// A function of the C interface as a command of Tcl, made from the types of its parameters.

#include "value.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <utility>

namespace korvane {

/// The words of a command; its arguments stand behind those that are its name.
struct Words {
    int skipped;
    int count;
    Tcl_Obj* const* all;

    std::size_t arguments() const { return static_cast<std::size_t>(count - skipped); }
    Tcl_Obj* operator[](std::size_t argument) const {
        return all[static_cast<std::size_t>(skipped) + argument];
    }
};

/// The parameters of a command by their names.
struct Signature {
    /// @param parameters names parted by blanks, of which those that end in "?" may be left out
    void declare(std::string_view parameters);
    /// False, with an error, unless as many arguments are there as the command takes.
    bool fits(Tcl_Interp* interp, Words const& words) const {
        std::size_t const count = words.arguments();
        if (count >= required && count <= total) [[likely]]
            return true;
        Tcl_WrongNumArgs(interp, words.skipped, words.all, usage.c_str());
        return false;
    }

    std::string usage;
    std::array<std::string_view, 5> names;
    std::size_t total = 0;
    std::size_t required = 0;
};

template <auto Function, typename... Parameters>
class Call {
  public:
    static int call(Tcl_Interp* interp, Words const& words) {
        Converters converters;
        if (!s_signature.fits(interp, words) || !take(converters, interp, words, Indices()))
            return TCL_ERROR;
        gen_c_status const status =
            std::apply([](auto&... each) { return Function(each.pass()...); }, converters);
        if (status == GEN_C_INTERNAL_ERROR) [[unlikely]]
            return raise_internal_error(interp, result(converters, status, Indices()));
        if (status > GEN_C_DIAGNOSED) [[unlikely]]
            return raise_status(interp, status);
        Tcl_SetObjResult(interp, result(converters, status, Indices()));
        return TCL_OK;
    }

    static void declare(std::string_view parameters) { s_signature.declare(parameters); }

  private:
    template <typename Parameter>
    using Converter = typename decltype(converter<Parameter>())::type;
    using Converters = std::tuple<Converter<Parameters>...>;
    using Indices = std::index_sequence_for<Parameters...>;

    /// How many arguments stand before the parameter.
    static constexpr std::size_t arguments_before(std::size_t parameter) {
        bool const is_argument[] = {Converter<Parameters>::is_argument..., false};
        std::size_t count = 0;
        for (std::size_t i = 0; i < parameter; ++i)
            count += is_argument[i] ? 1 : 0;
        return count;
    }
    static constexpr std::size_t results =
        sizeof...(Parameters) - arguments_before(sizeof...(Parameters));

    template <std::size_t... I>
    static bool take([[maybe_unused]] Converters& converters, [[maybe_unused]] Tcl_Interp* interp,
                     [[maybe_unused]] Words const& words, std::index_sequence<I...>) {
        return (take_one<I>(std::get<I>(converters), interp, words) && ...);
    }

    template <std::size_t I, typename Each>
    static bool take_one(Each& converter, [[maybe_unused]] Tcl_Interp* interp,
                         [[maybe_unused]] Words const& words) {
        if constexpr (Each::is_argument) {
            constexpr std::size_t at = arguments_before(I);
            return at >= words.arguments() ||
                   converter.take(interp, words[at], s_signature.names[at]);
        }
        return true;
    }

    /// Whether it was found, one result itself, or a list of several; empty without an answer.
    template <std::size_t... I>
    static Tcl_Obj* result([[maybe_unused]] Converters const& converters, gen_c_status status,
                           std::index_sequence<I...>) {
        if constexpr (results == 0) {
            return Tcl_NewBooleanObj(status == GEN_C_OK);
        } else {
            constexpr bool has_table = (std::is_same_v<Converter<Parameters>, TableResult> || ...);
            if (status == GEN_C_NOT_FOUND && !has_table)
                return Tcl_NewObj();
            Tcl_Obj* objects[results];
            std::size_t count = 0;
            ((count += store(std::get<I>(converters), objects + count)), ...);
            return results == 1 ? objects[0] : Tcl_NewListObj(static_cast<int>(results), objects);
        }
    }

    template <typename Each>
    static std::size_t store(Each const& converter, Tcl_Obj** object) {
        if constexpr (Each::is_argument) {
            return 0;
        } else {
            *object = converter.object();
            return 1;
        }
    }

    static inline Signature s_signature;
};

/// A command: what it is called, and what runs it.
struct Command {
    char const* name;
    int (*call)(Tcl_Interp* interp, Words const& words);
};

template <auto Function, typename... Parameters>
Command command_of(gen_c_status (*)(Parameters...), char const* name, std::string_view parameters) {
    Call<Function, Parameters...>::declare(parameters);
    return {name, Call<Function, Parameters...>::call};
}

template <auto Function>
Command command(char const* name, std::string_view parameters) {
    return command_of<Function>(Function, name, parameters);
}

} // namespace korvane
