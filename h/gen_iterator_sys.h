#pragma once

/// Iteration over the values of an enumeration.

#include "err_report.h"

#include <iterator>
#include <type_traits>

/// Walks the closed range from one enumerator to another, every value between them included.
///
///     for (GEN_ENUM_ITERATOR<COLOUR> colour(FIRST, LAST); !colour.at_end(); ++colour)
///         paint(*colour);
///
/// The end is a flag, not a value past the last one: a range may run up to the largest value of the
/// underlying type. A range whose first value is greater than its last one is empty.
template <typename Enum>
class GEN_ENUM_ITERATOR {
    static_assert(std::is_enum_v<Enum>);
    using Number = std::underlying_type_t<Enum>;

  public:
    /// At @p first; both ends belong to the range.
    GEN_ENUM_ITERATOR(Enum first, Enum last)
        : m_current(first), m_last(last), m_at_end(number(first) > number(last)) {}

    /// True past the last value.
    bool at_end() const { return m_at_end; }
    bool operator==(std::default_sentinel_t) const { return m_at_end; }

    /// The current value. At the end it reports "Cannot dereference an end enum iterator" and gives
    /// the last value of the range.
    Enum operator*() const {
        if (m_at_end) {
            err_report_internal_error("Cannot dereference an end enum iterator", "GEN",
                                      "../../h/gen_iterator_sys", end_line);
            return m_last;
        }
        return m_current;
    }

    /// Goes to the next value; at the end it stays there.
    GEN_ENUM_ITERATOR& operator++() {
        m_at_end = m_at_end || m_current == m_last;
        if (!m_at_end)
            m_current = static_cast<Enum>(number(m_current) + 1);
        return *this;
    }

  private:
    static constexpr int end_line = 36; ///< frozen, as err_report.h says

    static Number number(Enum value) { return static_cast<Number>(value); }

    Enum m_current;
    Enum m_last;
    bool m_at_end;
};
