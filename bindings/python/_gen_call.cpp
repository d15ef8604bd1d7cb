#include "_gen_call.h"

#include <algorithm>

namespace korvane {

namespace {

/// What the package has functions for under other names.
constexpr std::pair<std::string_view, char const*> public_names[] = {
    {"where", "Installation"},
    {"installation", "Installation"},
    {"libraries", "Installation.libraries"},
    {"library", "Installation.library()"},
    {"device_files", "Installation.device_files"},
    {"set_project", "project.directory"},
    {"set_database", "project.database"},
    {"set_output", "project.output"},
    {"set_project_libraries", "project.libraries"},
    {"set_user_libraries", "project.user_libraries"},
    {"project", "project"},
    {"directories", "project"},
    {"relative_to_project", "project.relative()"},
    {"trace_find", "trace()"},
    {"enter_64bit", "paths_for_64bit()"},
    {"stopwatch_start", "Stopwatch.start()"},
    {"stopwatch_stop", "Stopwatch.stop()"},
    {"stopwatch_reset", "Stopwatch.reset()"},
    {"stopwatch_seconds", "Stopwatch.seconds"},
    {"stopwatch_lap", "Stopwatch"},
    {"undo_create", "UndoFile()"},
    {"undo_begin", "UndoFile.section()"},
    {"undo_describe", "UndoFile.section()"},
    {"undo_add", "UndoSection"},
    {"undo_end", "UndoSection"},
    {"undo_commit", "UndoFile.commit()"},
    {"flags_add", "Flags.add()"},
    {"flags_find", "Flags.find()"},
    {"flags_remove", "Flags.remove()"},
    {"flags_describe", "Flags.describe()"},
    {"flags_statistics", "Flags.statistics"},
    {"flags_slots", "Flags.slots"},
    {"flags_swept", "Flags.swept()"},
    {"histogram_create", "Histogram()"},
    {"histogram_add", "Histogram.add()"},
    {"histogram_size", "Histogram"},
    {"histogram_bin", "Histogram.bin()"},
    {"histogram_bins", "Histogram.bins"},
    {"histogram_outside", "Histogram.outside"},
};

std::string public_name(std::string_view function) {
    auto const* const found =
        std::find_if(std::begin(public_names), std::end(public_names),
                     [function](auto const& each) { return each.first == function; });
    return found != std::end(public_names) ? found->second : std::string(function) + "()";
}

} // namespace

bool Site::may_be_none() const {
    return signature.may_be_none(argument);
}

static bool raise_of(PyObject* exception, char const* function, std::string_view argument,
                     char const* text) {
    PyErr_Format(exception, "%s argument '%s' %s", function, std::string(argument).c_str(), text);
    return false;
}

bool Site::raise(PyObject* exception, char const* text) const {
    return raise_of(exception, signature.function(), signature.name(argument), text);
}

void Signature::declare(char const* function, std::string_view parameters) {
    m_function = public_name(function);
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
        PyErr_Format(PyExc_TypeError, "%s takes %zu arguments, not %zu", function(), m_count,
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
            return raise_of(PyExc_TypeError, function(), name(i), "is missing");
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
        return raise_of(PyExc_TypeError, function(), text, "is not known");
    PyObject*& place = given[found - m_parameters.begin()];
    if (place != nullptr)
        return raise_of(PyExc_TypeError, function(), text, "is given twice");
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
