#pragma once

/// The key by which sorted() and its like get the natural order.

#include "_gen_value.h"

namespace korvane {

/// Adds the class natural_key to the module.
bool add_natural_key(PyObject* module);

} // namespace korvane
