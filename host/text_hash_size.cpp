#include "gen_string_checksum.h"
#include "text.h"

namespace {

class HashSize : public Command {
  public:
    void declare(Options& options) override {
        options.argument("numbers", &m_numbers, "How many entries the tables are for").required();
    }

    Status run(Answer& answer) override {
        Value::List sizes;
        bool all_fit = true;
        for (std::uint32_t const number : m_numbers) {
            bool const fits = number <= *std::rbegin(gen_hash_size_primes);
            if (fits)
                sizes.emplace_back(gen_hash_next_size(number));
            else
                sizes.emplace_back();
            all_fit = all_fit && fits;
        }
        if (!all_fit)
            answer.remark("there is no size above 4294967291");
        answer.plain("sizes", std::move(sizes));
        return status_of(all_fit);
    }

  private:
    std::vector<std::uint32_t> m_numbers;
};

constexpr Help help = {
    .name = "hash-size",
    .summary = "Gives the prime sizes of hash tables",
    .example = "  $ gen_query text hash-size 0 14 1000000\n"
               "  13\n"
               "  31\n"
               "  1048573",
};

} // namespace

void add_text_hash_size(Commands& text) {
    text.add<HashSize>(help);
}
