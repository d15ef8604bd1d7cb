#include "gen_localization.h"
#include "text.h"

#include <cctype>
#include <clocale>

namespace {

struct CharacterClass {
    char const* name;
    int (*neutral)(int);
    int (*local)(int);
};

constexpr CharacterClass classes[] = {
    {"alnum", gen_local_isalnum, std::isalnum}, {"alpha", gen_local_isalpha, std::isalpha},
    {"cntrl", gen_local_iscntrl, std::iscntrl}, {"graph", gen_local_isgraph, std::isgraph},
    {"lower", gen_local_islower, std::islower}, {"print", gen_local_isprint, std::isprint},
    {"punct", gen_local_ispunct, std::ispunct}, {"space", gen_local_isspace, std::isspace},
    {"upper", gen_local_isupper, std::isupper}, {"xdigit", gen_local_isxdigit, std::isxdigit},
};

Value::List classes_of(int byte, int (*CharacterClass::*is_in)(int)) {
    Value::List names;
    for (CharacterClass const& one : classes)
        if ((one.*is_in)(byte) != 0)
            names.emplace_back(one.name);
    return names;
}

class Class : public Command {
  public:
    void declare(Options& options) override {
        options.argument("text", &m_text, "A text, each of whose bytes is looked at").required();
        options.value("-l,--locale", &m_locale,
                      "Show what this locale says of them too, \"\" for the environment's");
    }

    Status run(Answer& answer) override {
        if (m_locale && std::setlocale(LC_CTYPE, m_locale->c_str()) == nullptr) {
            answer.remark("there is no locale \"" + *m_locale + '"');
            return STATUS_USAGE;
        }
        Value::List rows;
        for (char const character : m_text) {
            int const byte = static_cast<unsigned char>(character);
            bool const is_ascii = gen_local_isascii(byte) != 0;
            Value::Record row{{"byte", byte},
                              {"character", is_ascii ? Value(printable({&character, 1})) : Value()},
                              {"classes", classes_of(byte, &CharacterClass::neutral)}};
            if (m_locale)
                row.emplace_back("classes_in_locale", classes_of(byte, &CharacterClass::local));
            rows.emplace_back(std::move(row));
        }
        answer.table("bytes", std::move(rows));
        return STATUS_YES;
    }

  private:
    std::string m_text;
    std::optional<std::string> m_locale;
};

constexpr Help help = {
    .name = "class",
    .summary = "Shows the classes of characters, the same in every locale",
    .example = "  $ gen_query text class 'F_'\n"
               "  byte  character  classes\n"
               "  70    F          alnum, alpha, graph, print, upper, xdigit\n"
               "  95    _          graph, print, punct",
};

} // namespace

void add_text_class(Commands& text) {
    text.add<Class>(help);
}
