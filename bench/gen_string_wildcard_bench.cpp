#include "gen_string_wildcard.h"

#include "contest.h"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <memory>

namespace {

struct Expansion {
    std::uint32_t bytes = 0;
    std::uint32_t length = 1;
};

/// Of every byte, for the locale in force once and for all.
std::vector<Expansion> all_expansions() {
    std::vector<Expansion> table(256);
    for (unsigned byte = 0; byte < 256; ++byte) {
        auto const character = static_cast<char>(byte);
        auto const put = [&](std::string const& text) {
            std::memcpy(&table[byte].bytes, text.data(), text.size());
            table[byte].length = static_cast<std::uint32_t>(text.size());
        };
        if (std::strchr(".()[\\]|", character) != nullptr && byte != 0)
            put({'\\', character});
        else if (character == '*' || character == '?')
            put({'.', character});
        else if (std::isalpha(static_cast<signed char>(character)))
            put({'[', static_cast<char>(std::tolower(character)),
                 static_cast<char>(std::toupper(character)), ']'});
        else
            put({character});
    }
    return table;
}

/// Expands into room that is there already, then does what the interface asks for.
class Limit {
  public:
    STR operator()(STR* wildcard) {
        char* at = m_room.data();
        for (char const character : *wildcard) {
            Expansion const& expansion = m_table[static_cast<unsigned char>(character)];
            std::memcpy(at, &expansion.bytes, sizeof expansion.bytes);
            at += expansion.length;
        }
        wildcard->assign(m_room.data(), static_cast<std::size_t>(at - m_room.data()));
        return *wildcard;
    }

  private:
    std::vector<Expansion> m_table = all_expansions();
    std::vector<char> m_room = std::vector<char>(512 * 1024);
};

STR random_pattern(std::size_t length) {
    static char const characters[] = "abcdefghijklmnopqrstuvwxyz_/0123.*?[]";
    STR pattern(length, '\0');
    for (char& character : pattern)
        character = characters[random_below(sizeof characters - 1)];
    return pattern;
}

void enter_patterns(std::string const& work, std::vector<STR> patterns, double items) {
    auto const all = std::make_shared<std::vector<STR> const>(std::move(patterns));
    enter(
        work, "gen",
        [all](std::size_t turn) {
            STR wildcard = (*all)[turn % all->size()];
            return gen_wildcard_to_reg_expr(&wildcard, false).size();
        },
        items);
    enter(
        work, "limit",
        [all, limit = Limit()](std::size_t turn) mutable {
            STR wildcard = (*all)[turn % all->size()];
            return limit(&wildcard).size();
        },
        items);
}

Family const wildcards{[] {
    std::string const work = "gen_wildcard_to_reg_expr, ";
    std::vector<STR> patterns;
    for (std::size_t i = 0; i < input_count; ++i)
        patterns.push_back(random_pattern(4 + random_below(20)));
    enter_patterns(work + "short patterns", patterns, 1);
    for (std::size_t const kibibytes : {1U, 100U}) {
        std::size_t const length = kibibytes * 1024;
        std::vector<STR> long_patterns;
        for (std::size_t i = 0; i < 64 / kibibytes + 1; ++i)
            long_patterns.push_back(random_pattern(length));
        enter_patterns(work + std::to_string(kibibytes) + " KiB", long_patterns,
                       static_cast<double>(length));
    }
}};

} // namespace
