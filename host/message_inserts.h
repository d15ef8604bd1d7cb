#pragma once

/// Which arguments a message asks for, and making them from texts.

#include "stl.h"

#include <list>
#include <map>
#include <string>

/// The conversion of each insert of a message, by the insert's number.
class MessageInserts {
  public:
    /// Why arguments cannot be made for this message; "" when they can.
    std::string read(std::string_view format);

    std::map<unsigned, std::string> const& conversions() const { return m_conversions; }

  private:
    std::string add(unsigned number, std::string conversion);

    std::map<unsigned, std::string> m_conversions;
    std::size_t m_room_taken = 0;
};

/// The arguments of a message in their order.
class MessageArguments {
  public:
    /// Appends what @p conversion wants, read from @p text. False when the text is no such thing.
    bool add(std::string const& conversion, std::string const& text);
    /// Appends one that no insert names.
    void add_unnamed() { m_list.add(0); }

    char* args() { return m_list.args(); }

  private:
    template <typename T>
    bool add_integer(std::string const& text, bool is_signed);
    template <typename T>
    bool add_floating(std::string const& text, T (*read)(char const*, char**));
    bool add_character(std::string const& text);
    bool add_wide_character(std::string const& text);
    bool add_wide_text(std::string const& text);
    bool add_pointer(char letter, std::string const& text);

    STL_ARG_LIST m_list;
    std::list<std::string> m_texts;
    std::list<std::wstring> m_wide_texts;
    long long m_written = 0; // what a %n would write to, if it wrote
};
