#pragma once

/// Which arguments a message asks for, and making them from texts.

#include "stl.h"

#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// The conversions of each insert of a message, each of them once, by the insert's number.
class MessageInserts {
  public:
    using Conversions = std::vector<std::string>;

    /// Why arguments cannot be made for this message; "" when they can.
    std::string read(char const* format);

    std::map<unsigned, Conversions> const& conversions() const { return m_conversions; }
    /// What stands behind the letter of a conversion, where it prints nothing: a sentence each.
    std::vector<std::string> remarks() const;

  private:
    std::string add(unsigned number, std::string conversion);

    std::map<unsigned, Conversions> m_conversions;
    std::size_t m_room_taken = 0;
};

/// The arguments of a message in their order.
class MessageArguments {
  public:
    /// Makes the arguments that the inserts ask for from @p texts, which they may point into: the
    /// first for %1. Those that no insert names are a word. Why they cannot be made; "" when they
    /// can.
    std::string make(MessageInserts const& inserts, std::vector<std::string> const& texts);

    char* args() { return m_list.args(); }

  private:
    std::string add(MessageInserts::Conversions const& conversions, std::string const& text);
    std::optional<STL_VALUE> value(STL_CONVERSION const& conversion, std::string const& text);
    std::optional<STL_VALUE> wide_text(std::string const& text);
    void append(STL_ARGUMENT argument, STL_VALUE const& value);

    STL_ARG_LIST m_list;
    std::list<std::wstring> m_wide_texts;
    long long m_written = 0; // what a %n would write to, if it wrote
};
