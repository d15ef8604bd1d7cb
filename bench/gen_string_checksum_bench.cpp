#include "gen_string_checksum.h"

#include "contest.h"

#include <algorithm>
#include <bit>
#include <boost/crc.hpp>
#include <cstring>
#include <memory>
#ifdef BENCH_LIBRARY_PEERS
#include <zlib.h>
#endif

namespace {

/// So many that their order cannot be learned.
constexpr std::size_t many = 64 * 1024;

void enter_crc(std::size_t length, std::size_t count) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i)
        texts.push_back(random_letters(length));
    auto const all = std::make_shared<std::vector<std::string> const>(std::move(texts));
    std::string const work = "gen_crc_generator, " + std::to_string(length);
    auto const enter_one = [&](char const* contestant, auto checksum) {
        enter(work, contestant, [all, checksum](std::size_t turn) {
            return checksum((*all)[turn % all->size()].c_str());
        });
    };
    enter_one("gen", [](char const* text) { return gen_crc_generator(text); });
#ifdef BENCH_LIBRARY_PEERS
    enter_one("zlib crc32", [](char const* text) {
        return crc32(0, reinterpret_cast<Bytef const*>(text), static_cast<uInt>(std::strlen(text)));
    });
#endif
    enter_one("boost::crc_32_type", [](char const* text) {
        boost::crc_32_type crc;
        crc.process_bytes(text, std::strlen(text));
        return crc.checksum();
    });
}

/// Of sizes that an entry surely fits. Not in line, where it would be computed for many at a time.
[[gnu::noinline]] unsigned limit_hash_size(unsigned n) {
    n = std::max(n, 13U);
    unsigned const entry = static_cast<unsigned>(std::bit_width(n - 1)) - 1;
    return gen_hash_size_primes[entry + (gen_hash_size_primes[entry] < n ? 1U : 0U)];
}

void enter_hash_sizes() {
    std::vector<unsigned> sizes(many);
    for (unsigned& size : sizes)
        size = static_cast<unsigned>(bench_random()()) >> random_below(31);
    std::string const work = "gen_hash_next_size";
    enter(work, "gen",
          [sizes](std::size_t turn) { return gen_hash_next_size(sizes[turn % many]); });
    enter(work, "limit", [sizes](std::size_t turn) { return limit_hash_size(sizes[turn % many]); });
    enter(work, "std::lower_bound", [sizes](std::size_t turn) {
        return *std::lower_bound(gen_hash_size_primes + 3, gen_hash_size_primes + 31,
                                 sizes[turn % many]);
    });
}

/// Draws many in a round, so that the state can stay in registers as it does in a caller's loop.
template <typename Draw>
void enter_draws(std::string const& contestant, Draw draw) {
    constexpr unsigned draws = 256;
    auto const round = [draw](std::size_t) mutable {
        unsigned sum = 0;
        for (unsigned i = 0; i < draws; ++i)
            sum += static_cast<unsigned>(draw());
        return sum;
    };
    enter("GEN_RAND::get_rand", contestant, round, draws);
}

struct LimitRandom {
    std::uint32_t state = 1;

    std::uint32_t operator()() {
        state = state * 214013 + 2531011;
        return state >> 16 & 0x7FFF;
    }
};

void enter_random_numbers() {
    enter_draws("gen", [random = GEN_RAND(1)]() mutable { return random.get_rand(); });
    enter_draws("limit", LimitRandom());
    enter_draws("std::minstd_rand", std::minstd_rand(1));
    enter_draws("std::mt19937", std::mt19937(1));
}

/// What the strpbrk way does: find the next invalid character, replace it, go on behind it.
void replace_by_strpbrk(char* name) {
    std::size_t length = std::strlen(name);
    while (length > 0 && name[length - 1] == ' ')
        --length;
    name[length] = '\0';
    static char const invalid[] = " !#$%&'()+-./<=>?[\\]|";
    static char const safe[] = "_EFRCKTQPMJLIADBGOHNS";
    for (char* at = std::strpbrk(name, invalid); at != nullptr; at = std::strpbrk(at + 1, invalid))
        *at = safe[std::strchr(invalid, *at) - invalid];
}

/// By a table, the end found on the way.
class LimitReplace {
  public:
    LimitReplace() {
        for (unsigned byte = 0; byte < 256; ++byte)
            m_table[byte] = static_cast<char>(byte);
        static char const invalid[] = " !#$%&'()+-./<=>?[\\]|";
        static char const safe[] = "_EFRCKTQPMJLIADBGOHNS";
        for (std::size_t i = 0; invalid[i] != '\0'; ++i)
            m_table[static_cast<unsigned char>(invalid[i])] = safe[i];
    }

    void operator()(char* name) const {
        char* end = name;
        for (; *name != '\0'; ++name) {
            if (*name != ' ')
                end = name + 1;
            *name = m_table[static_cast<unsigned char>(*name)];
        }
        *end = '\0';
    }

  private:
    char m_table[256];
};

void enter_sanitising() {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < input_count; ++i)
        names.push_back(random_letters(8) + " (" + random_letters(9) + "-1)/" + random_letters(7) +
                        ".v ");
    std::string const work = "gen_replace_invalid_chars";
    auto const enter_one = [&](char const* contestant, auto replace) {
        enter(work, contestant, [names, replace](std::size_t turn) {
            char buffer[64];
            std::string const& name = names[turn % input_count];
            std::memcpy(buffer, name.c_str(), name.size() + 1);
            replace(buffer);
            benchmark::DoNotOptimize(buffer);
            return buffer[0];
        });
    };
    enter_one("gen", [](char* name) { gen_replace_invalid_chars(name); });
    enter_one("limit", LimitReplace());
    enter_one("strpbrk", replace_by_strpbrk);
}

Family const checksums{[] {
    enter_crc(8, input_count);
    enter_crc(64, input_count);
    enter_crc(1024, 64);
    enter_crc(1024 * 1024, 1);
    enter_sanitising();
    enter_hash_sizes();
    enter_random_numbers();
}};

} // namespace
