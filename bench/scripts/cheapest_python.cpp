/// The cheapest way there is to call a C function from Python, for bench/scripts/python.py:
/// arguments taken as C strings, the result made, and in between either nothing or the library
/// itself.

#define PY_SSIZE_T_CLEAN
#include "gen.h"

#include <Python.h>
#include <cstring>

namespace {

PyObject* path_type = nullptr;

/// With the check for null characters that the interpreter's own functions have.
char const* string_of(PyObject* object) {
    Py_ssize_t size = 0;
    char const* const text = PyUnicode_AsUTF8AndSize(object, &size);
    if (text == nullptr || std::strlen(text) == static_cast<std::size_t>(size))
        return text;
    PyErr_SetString(PyExc_ValueError, "embedded null character");
    return nullptr;
}

PyObject* path_of(char const* text) {
    PyObject* const decoded = PyUnicode_DecodeFSDefault(text);
    PyObject* const path = PyObject_CallOneArg(path_type, decoded);
    Py_DECREF(decoded);
    return path;
}

template <auto Compare>
PyObject* compared(PyObject*, PyObject* const* arguments, Py_ssize_t count) {
    char const* const first = count == 2 ? string_of(arguments[0]) : nullptr;
    char const* const second = first != nullptr ? string_of(arguments[1]) : nullptr;
    return second != nullptr ? PyLong_FromLong(Compare(first, second)) : nullptr;
}

template <auto Sum>
PyObject* summed(PyObject*, PyObject* object) {
    char const* const text = string_of(object);
    return text != nullptr ? PyLong_FromUnsignedLong(static_cast<unsigned>(Sum(text))) : nullptr;
}

PyObject* nothing_found(PyObject*, PyObject* name) {
    return string_of(name) != nullptr ? path_of("/opt/korvane/project/counter.v") : nullptr;
}

PyObject* found(PyObject*, PyObject* object) {
    char const* const name = string_of(object);
    return name != nullptr ? path_of(gen_find_file_cache_assisted(name)) : nullptr;
}

constexpr auto compare_nothing = [](char const*, char const*) { return 1; };
constexpr auto compare = [](char const* a, char const* b) { return gen_lexcmp(a, b); };
constexpr auto sum_nothing = [](char const*) { return 0x789ABCDE; };

template <auto Compare>
PyMethodDef comparison(char const* name) {
    return {name, reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(compared<Compare>)),
            METH_FASTCALL, nullptr};
}

PyMethodDef methods[] = {
    comparison<+compare_nothing>("nothing_compared"),
    comparison<+compare>("compared"),
    {"nothing_summed", summed<+sum_nothing>, METH_O, nullptr},
    {"summed", summed<gen_crc_generator>, METH_O, nullptr},
    {"nothing_found", nothing_found, METH_O, nullptr},
    {"found", found, METH_O, nullptr},
    {nullptr, nullptr, 0, nullptr},
};

PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "cheapest", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

} // namespace

PyMODINIT_FUNC PyInit_cheapest() {
    path_type = PyObject_GetAttrString(PyImport_ImportModule("pathlib"), "Path");
    return PyModule_Create(&definition);
}
