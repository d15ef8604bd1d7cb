#include "_gen_value.h"

namespace korvane {

namespace {

// References that are kept for the process.
PyObject* kept_path = nullptr;
PyObject* internal_error = nullptr;
PyObject* not_started_error = nullptr;

PyObject* cell_of(gen_c_table const* table, std::size_t row, std::size_t column) {
    switch (gen_c_table_kind(table, row, column)) {
    case GEN_C_TEXT: {
        std::string_view const text = gen_c_table_text(table, row, column);
        return decoded(text.data(), text.size());
    }
    case GEN_C_INTEGER:
        return PyLong_FromLongLong(gen_c_table_integer(table, row, column));
    case GEN_C_TRUTH:
        return PyBool_FromLong(static_cast<long>(gen_c_table_integer(table, row, column)));
    case GEN_C_REAL:
        return PyFloat_FromDouble(gen_c_table_real(table, row, column));
    case GEN_C_NOTHING:
        break;
    }
    Py_RETURN_NONE;
}

PyObject* row_of(gen_c_table const* table, std::size_t row) {
    PyObject* const record = PyDict_New();
    for (std::size_t column = 0; record != nullptr && column < gen_c_table_columns(table);
         ++column) {
        PyObject* const cell = cell_of(table, row, column);
        if (cell == nullptr ||
            PyDict_SetItemString(record, gen_c_table_name(table, column), cell) != 0) {
            Py_XDECREF(cell);
            Py_DECREF(record);
            return nullptr;
        }
        Py_DECREF(cell);
    }
    return record;
}

PyObject* report_of(std::size_t index) {
    char const* condition = nullptr;
    char const* source = nullptr;
    int line = 0;
    gen_c_report(index, &condition, &source, &line);
    return Py_BuildValue("(NNi)", decoded(condition, std::char_traits<char>::length(condition)),
                         decoded(source, std::char_traits<char>::length(source)), line);
}

PyObject* attribute(char const* module_name, char const* name) {
    PyObject* const module = PyImport_ImportModule(module_name);
    PyObject* const found = module != nullptr ? PyObject_GetAttrString(module, name) : nullptr;
    Py_XDECREF(module);
    return found;
}

} // namespace

bool Text::take_any(PyObject* object, Site const& site) {
    if (object == Py_None && site.may_be_none())
        return true;
    PyObject* path = nullptr;
    if (PyUnicode_Check(object) || PyBytes_Check(object)) {
        path = Py_NewRef(object);
    } else {
        path = PyOS_FSPath(object);
        if (path == nullptr) {
            if (!PyErr_ExceptionMatches(PyExc_TypeError))
                return false;
            PyErr_Clear();
            return site.raise(PyExc_TypeError, "must be str, bytes or a path");
        }
    }
    m_owned = PyUnicode_Check(path) ? PyUnicode_EncodeFSDefault(path) : Py_NewRef(path);
    Py_DECREF(path);
    if (m_owned == nullptr && PyErr_ExceptionMatches(PyExc_UnicodeEncodeError)) {
        PyErr_Clear();
        return site.raise(PyExc_ValueError, "contains a character that no file name can have");
    }
    if (m_owned == nullptr)
        return false;
    m_bytes = PyBytes_AS_STRING(m_owned);
    return has_no_nul(static_cast<std::size_t>(PyBytes_GET_SIZE(m_owned)), site);
}

PyObject* rows_of(gen_c_table const* table) {
    PyObject* const rows = PyList_New(0);
    for (std::size_t row = 0; rows != nullptr && row < gen_c_table_rows(table); ++row) {
        PyObject* const record = row_of(table, row);
        if (record == nullptr || PyList_Append(rows, record) != 0) {
            Py_XDECREF(record);
            Py_DECREF(rows);
            return nullptr;
        }
        Py_DECREF(record);
    }
    return rows;
}

PyObject* path_of(PyObject* text) {
    PyObject* const path = PyObject_CallOneArg(kept_path, text);
    Py_DECREF(text);
    return path;
}

PyObject* reports() {
    std::size_t const count = gen_c_report_count();
    PyObject* const list = PyList_New(static_cast<Py_ssize_t>(count));
    for (std::size_t i = 0; list != nullptr && i < count; ++i) {
        PyObject* const report = report_of(i);
        if (report == nullptr) {
            Py_DECREF(list);
            return nullptr;
        }
        PyList_SET_ITEM(list, static_cast<Py_ssize_t>(i), report);
    }
    return list;
}

PyObject* raise_internal_error(PyObject* answer) {
    PyObject* const arguments =
        answer != nullptr ? Py_BuildValue("(NN)", reports(), answer) : nullptr;
    if (arguments != nullptr)
        PyErr_SetObject(internal_error, arguments);
    Py_XDECREF(arguments);
    return nullptr;
}

void raise_status(char const* function, gen_c_status status) {
    switch (status) {
    case GEN_C_OK:
    case GEN_C_NOT_FOUND:
    case GEN_C_DIAGNOSED:
    case GEN_C_INTERNAL_ERROR:
        break;
    case GEN_C_NOT_STARTED:
        PyErr_Format(not_started_error, "%s needs korvane_gen.start()", function);
        break;
    case GEN_C_FAILED:
        PyErr_SetString(PyExc_OSError, gen_c_reason());
        break;
    case GEN_C_NO_MEMORY:
        PyErr_NoMemory();
        break;
    case GEN_C_BAD_ARGUMENT:
        PyErr_Format(PyExc_ValueError, "%s: %s", function, gen_c_reason());
        break;
    }
}

bool prepare() {
    kept_path = attribute("korvane_gen._types", "kept_path");
    internal_error = attribute("korvane_gen._errors", "InternalError");
    not_started_error = attribute("korvane_gen._errors", "NotStartedError");
    return kept_path != nullptr && internal_error != nullptr && not_started_error != nullptr;
}

} // namespace korvane
