#include "_gen_call.h"

#include <algorithm>

namespace korvane {

bool Site::may_be_none() const {
    return signature.may_be_none(argument);
}

static bool raise_of(PyObject* exception, char const* function, std::string_view argument,
                     char const* text) {
    PyErr_Format(exception, "%s() argument '%s' %s", function, std::string(argument).c_str(), text);
    return false;
}

bool Site::raise(PyObject* exception, char const* text) const {
    return raise_of(exception, signature.function(), signature.name(argument), text);
}

void Signature::declare(char const* function, std::string_view parameters) {
    m_function = function;
    while (!parameters.empty()) {
        std::string_view name = parameters.substr(0, parameters.find(' '));
        parameters.remove_prefix(std::min(name.size() + 1, parameters.size()));
        bool const may_be_left_out = name.ends_with('?');
        bool const may_be_none = may_be_left_out || name.ends_with('*');
        m_required += may_be_left_out ? 0 : 1;
        name.remove_suffix(may_be_none ? 1 : 0);
        m_parameters.at(m_count++) = {name, may_be_none};
    }
}

bool Signature::bind(PyObject* const* arguments, std::size_t count, PyObject* keywords,
                     PyObject** given) const {
    if (count > m_count) {
        PyErr_Format(PyExc_TypeError, "%s() takes %zu arguments, not %zu", m_function, m_count,
                     count);
        return false;
    }
    std::copy_n(arguments, count, given);
    Py_ssize_t const named = keywords != nullptr ? PyTuple_GET_SIZE(keywords) : 0;
    for (Py_ssize_t i = 0; i < named; ++i)
        if (!bind_keyword(PyTuple_GET_ITEM(keywords, i),
                          arguments[static_cast<Py_ssize_t>(count) + i], given))
            return false;
    for (std::size_t i = 0; i < m_required; ++i)
        if (given[i] == nullptr)
            return raise_of(PyExc_TypeError, m_function, name(i), "is missing");
    return true;
}

bool Signature::bind_keyword(PyObject* name, PyObject* value, PyObject** given) const {
    char const* const text = PyUnicode_AsUTF8(name);
    if (text == nullptr)
        return false;
    auto const* const end = m_parameters.begin() + m_count;
    auto const* const found = std::find_if(
        m_parameters.begin(), end, [text](Parameter const& known) { return known.name == text; });
    if (found == end)
        return raise_of(PyExc_TypeError, m_function, text, "is not known");
    PyObject*& place = given[found - m_parameters.begin()];
    if (place != nullptr)
        return raise_of(PyExc_TypeError, m_function, text, "is given twice");
    place = value;
    return true;
}

PyObject* tuple_of(PyObject** objects, std::size_t count) {
    bool const all = std::find(objects, objects + count, nullptr) == objects + count;
    PyObject* const tuple = all ? PyTuple_New(static_cast<Py_ssize_t>(count)) : nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        if (tuple != nullptr)
            PyTuple_SET_ITEM(tuple, static_cast<Py_ssize_t>(i), objects[i]);
        else
            Py_XDECREF(objects[i]);
    }
    return tuple;
}

} // namespace korvane
