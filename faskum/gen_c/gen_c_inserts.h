#pragma once

/// Which arguments a message asks for.

#include <string_view>

#include "mem_alloc_sys.h"
#include "stl.h"

namespace gen_c {

/// The conversion taken apart, which must outlive what this gives.
inline STL_CONVERSION parsed(STR const& conversion) {
    STL_CONVERSION parsed;
    stl_parse_conversion(conversion.c_str() + 1, parsed);
    return parsed;
}

/// The conversion of each insert of a message, by the insert's number.
class Inserts {
  public:
    static constexpr unsigned most = 99;

    /// Why arguments cannot be made for this message; "" when they can.
    STR read(std::string_view format);

    /// "" where no insert has that number.
    STR const& conversion(unsigned number) const { return m_conversions[number]; }

  private:
    STR add(unsigned number, STR conversion);

    STR m_conversions[most + 1];
    std::size_t m_room_taken = 0;
};

} // namespace gen_c
