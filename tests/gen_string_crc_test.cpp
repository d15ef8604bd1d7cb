// The checksum on a machine that cannot fold: the routine is compiled into this program, which says
// so.

#include "gen_string_crc.h"

#include "gen_string_crc_folded.h"
#include "plain_string_checksum.h"

#include <gtest/gtest.h>
#include <random>

bool crc_can_fold() {
    return false;
}

std::uint32_t crc_update_folded(std::uint32_t crc, char const*, std::size_t) {
    ADD_FAILURE() << "folded all the same";
    return crc;
}

TEST(CrcByTables, EveryLengthAndInPieces) {
    std::mt19937 random(7);
    std::string text;
    for (std::size_t size = 1; size < 300; ++size) {
        text += static_cast<char>(random());
        auto const expected = static_cast<std::uint32_t>(plain_crc(text));
        ASSERT_EQ(crc_update(0xFFFFFFFF, text.data(), size), expected) << size;
        std::size_t const first = random() % size;
        std::uint32_t const begun = crc_update(0xFFFFFFFF, text.data(), first);
        ASSERT_EQ(crc_update(begun, text.data() + first, size - first), expected) << size;
    }
}
