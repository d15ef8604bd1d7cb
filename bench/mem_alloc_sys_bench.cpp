// What tracked memory costs: the library string and its list beside those of the standard library.

#include "mem_alloc_sys.h"

#include "contest.h"

#include <list>
#include <memory>

namespace {

std::vector<std::string> random_texts(std::size_t count, unsigned shortest, unsigned longest) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i)
        texts.push_back(random_letters(shortest + random_below(longest - shortest + 1)));
    return texts;
}

using Texts = std::shared_ptr<std::vector<std::string> const>;

template <typename Text>
void enter_construction(std::string const& contestant, Texts const& texts) {
    enter("STR construct and destroy, 8 to 60 bytes", contestant, [texts](std::size_t turn) {
        Text const text((*texts)[turn % input_count].c_str());
        return text[0];
    });
}

template <typename Text>
void enter_appending(std::string const& contestant, Texts const& pieces) {
    enter("STR append churn, a path of 5 pieces", contestant, [pieces](std::size_t turn) {
        Text path;
        for (std::size_t i = 0; i < 5; ++i) {
            path += '/';
            path += (*pieces)[(turn + i) % input_count].c_str();
        }
        return path[0];
    });
}

template <typename Text, typename List>
void enter_list(std::string const& contestant, Texts const& names) {
    enter(
        "STR list of 512 names", contestant,
        [names](std::size_t) {
            List list;
            for (std::string const& name : *names)
                list.push_back(Text(name.c_str()));
            return list.size();
        },
        static_cast<double>(names->size()));
}

Family const library_strings{[] {
    auto const texts = std::make_shared<std::vector<std::string>>(random_texts(input_count, 8, 60));
    enter_construction<STR>("gen", texts);
    enter_construction<std::string>("std::string", texts);

    auto const pieces =
        std::make_shared<std::vector<std::string>>(random_texts(input_count, 3, 12));
    enter_appending<STR>("gen", pieces);
    enter_appending<std::string>("std::string", pieces);

    auto const names = std::make_shared<std::vector<std::string>>(random_texts(512, 8, 60));
    enter_list<STR, MEM_LIST<STR>>("gen", names);
    enter_list<std::string, std::list<std::string>>("std::string", names);
}};

} // namespace
