#include "_gen_key.h"

#include "_gen_call.h"

#include <new>

namespace korvane {

namespace {

/// The text itself is kept too: its bytes may be those of the object.
struct Key {
    PyObject_HEAD PyObject* object;
    Text text;
    bool ignore_case;
};

Key* key_of(PyObject* self) {
    return reinterpret_cast<Key*>(self);
}

PyObject* create(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    static char text_name[] = "text";
    static char case_name[] = "ignore_case";
    static char* names[] = {text_name, case_name, nullptr};
    PyObject* object = nullptr;
    int ignore_case = 0;
    if (PyArg_ParseTupleAndKeywords(arguments, keywords, "O|p:natural_key", names, &object,
                                    &ignore_case) == 0)
        return nullptr;
    PyObject* const self = type->tp_alloc(type, 0);
    if (self == nullptr)
        return nullptr;
    Key* const key = key_of(self);
    // Before anything can fail: destroy() ends its life in any case.
    new (&key->text) Text;
    key->object = Py_NewRef(object);
    key->ignore_case = ignore_case != 0;
    static Signature const signature = [] {
        Signature made;
        made.declare("natural_key", "text");
        return made;
    }();
    if (key->text.take(object, {signature, 0}))
        return self;
    Py_DECREF(self);
    return nullptr;
}

void destroy(PyObject* self) {
    PyTypeObject* const type = Py_TYPE(self);
    key_of(self)->text.~Text();
    Py_XDECREF(key_of(self)->object);
    type->tp_free(self);
    Py_DECREF(type);
}

PyObject* compare(PyObject* self, PyObject* other, int operation) {
    if (Py_TYPE(other) != Py_TYPE(self))
        Py_RETURN_NOTIMPLEMENTED;
    int order = 0;
    bool const ignore_case = key_of(self)->ignore_case || key_of(other)->ignore_case;
    gen_c_compare_natural(key_of(self)->text.bytes(), key_of(other)->text.bytes(),
                          ignore_case ? 1 : 0, &order);
    Py_RETURN_RICHCOMPARE(order, 0, operation);
}

} // namespace

bool add_natural_key(PyObject* module) {
    static char doc[] = "natural_key(text, ignore_case=False)\n--\n\n"
                        "A key that sorts by the natural order: sorted(names, key=natural_key).";
    static PyType_Slot slots[] = {
        {Py_tp_new, reinterpret_cast<void*>(create)},
        {Py_tp_dealloc, reinterpret_cast<void*>(destroy)},
        {Py_tp_richcompare, reinterpret_cast<void*>(compare)},
        {Py_tp_hash, reinterpret_cast<void*>(PyObject_HashNotImplemented)},
        {Py_tp_doc, doc},
        {0, nullptr},
    };
    static PyType_Spec description = {"korvane_gen.natural_key", sizeof(Key), 0, Py_TPFLAGS_DEFAULT,
                                      slots};
    PyObject* const type = PyType_FromSpec(&description);
    bool const added = type != nullptr && PyModule_AddObjectRef(module, "natural_key", type) == 0;
    Py_XDECREF(type);
    return added;
}

} // namespace korvane
