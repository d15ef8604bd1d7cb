#pragma once

/// Asking for another installation than the one that gen_query lies in.

#include <string>

/// From now on gen answers as in an executable of the installation at @p root. Gives a remark about
/// a root that has no libraries, or "".
/// The root can be chosen once, before anything is asked.
std::string enter_installation(std::string const& root);
