#include "gen_path_cache.h"

#include "gen_owned.h"
#include "gen_path_find.h"

#include <array>
#include <emmintrin.h>
#include <string_view>
#include <utility>

GEN_FIND_FILE_CACHE* gen_find_file_cache = nullptr;

namespace {

constexpr std::size_t block_size = 16;

constexpr std::uint32_t power_of_17(std::size_t exponent) {
    return exponent == 0 ? 1 : 17 * power_of_17(exponent - 1);
}

constexpr auto powers_of_17 = [] {
    std::array<std::uint32_t, block_size> powers{};
    for (std::size_t i = 0; i < block_size; ++i)
        powers[i] = power_of_17(i);
    return powers;
}();

__m128i load_block(void const* bytes) {
    return _mm_loadu_si128(static_cast<__m128i const*>(bytes));
}

/// The block without its first bytes, of which @p kept are left.
__m128i keep_last(__m128i block, std::size_t kept) {
    static constexpr std::array<signed char, 2 * block_size> mask = {
        0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,
        -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
    return _mm_and_si128(block, load_block(mask.data() + kept));
}

/// The hash of a block, bytes of zero in front of it counting for nothing.
std::uint32_t hash_of_block(__m128i bytes) {
    // Four bytes each make one number: up to the third power the factors are 16-bit numbers.
    auto const power = [](std::size_t exponent) {
        return static_cast<short>(power_of_17(exponent));
    };
    __m128i const in_four = _mm_setr_epi16(power(3), power(2), power(1), power(0), power(3),
                                           power(2), power(1), power(0));
    auto const sum_of_fours = [in_four](__m128i eight, std::uint32_t first, std::uint32_t second) {
        __m128i const pairs = _mm_madd_epi16(_mm_srai_epi16(eight, 8), in_four);
        __m128i const fours = _mm_add_epi32(pairs, _mm_srli_epi64(pairs, 32));
        return _mm_mul_epu32(
            fours, _mm_setr_epi32(static_cast<int>(first), 0, static_cast<int>(second), 0));
    };
    __m128i const zero = _mm_setzero_si128();
    __m128i const sums =
        _mm_add_epi64(sum_of_fours(_mm_unpacklo_epi8(zero, bytes), power_of_17(12), power_of_17(8)),
                      sum_of_fours(_mm_unpackhi_epi8(zero, bytes), power_of_17(4), 1));
    return static_cast<std::uint32_t>(
        _mm_cvtsi128_si32(_mm_add_epi64(sums, _mm_unpackhi_epi64(sums, sums))));
}

/// A text up to its terminator.
struct HASHED_TEXT {
    char const* text;
    std::size_t size;
    std::uint32_t hash;
};

HASHED_TEXT hashed_bytewise(char const* text) {
    std::uint32_t hash = 0;
    char const* end = text;
    for (; *end != '\0'; ++end)
        hash = hash * 17 + static_cast<std::uint32_t>(static_cast<signed char>(*end));
    return {text, static_cast<std::size_t>(end - text), hash};
}

/// Part of every lookup, which would be a fifth dearer on 32-bit for the calls in it.
#define LOOKUP_STEP [[gnu::always_inline]] inline

// hash = hash * 17 + byte, in 32 bits and with signed bytes.
//
// The length is taken from the string and not looked for: the text of a name that was not used for
// a while is not in the cache, and what depends on its contents waits for it.
LOOKUP_STEP HASHED_TEXT hashed(STR const& key) {
    char const* text = key.c_str();
    if (key.size() < block_size)
        return hashed_bytewise(text);
    char const* const end = text + key.size();
    __m128i least = load_block(end - block_size);
    std::size_t const rest = key.size() % block_size;
    std::uint32_t const rest_hash = hash_of_block(keep_last(least, rest));
    std::uint32_t hash = 0;
    for (; text != end - rest; text += block_size) {
        __m128i const block = load_block(text);
        least = _mm_min_epu8(least, block);
        hash = hash * power_of_17(block_size) + hash_of_block(block);
    }
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(least, _mm_setzero_si128())) != 0) [[unlikely]]
        return hashed_bytewise(key.c_str()); // it ends before its length says so
    return {key.c_str(), key.size(), hash * powers_of_17[rest] + rest_hash};
}

} // namespace

std::size_t STL_CASE_SENSITIVE_HASH_COMPARE::operator()(STR const& key) const {
    return hashed(key).hash;
}

// With ten thousand names a lookup costs what it waits for memory: for a slot, and for the two
// texts that stand where the slot says. All else that is kept of a path is in the slot, so that
// nothing waits for a third place.

struct GEN_FIND_FILE_CACHE::NAME : HASHED_TEXT {
    explicit NAME(STR const& name) : HASHED_TEXT(hashed(name)) {}
};

// What is compared is known from the name, and the kept one only has to agree: a search for its
// terminator would wait for it first.
LOOKUP_STEP bool GEN_FIND_FILE_CACHE::is_of(SLOT const& slot, NAME const& name) const {
    std::string_view const kept(m_texts.data() + slot.texts, slot.name_size);
    return slot.hash == name.hash && kept == std::string_view(name.text, name.size);
}

// The hash alone would do badly: its low bits are hardly more than the sum of the letters. The
// product's high bits depend on all of them.
LOOKUP_STEP std::size_t GEN_FIND_FILE_CACHE::first_slot(std::uint32_t hash) const {
    return (hash * 0x9E3779B9U) >> m_shift;
}

// The slot of the name, or the free one where it would go. There must be slots.
LOOKUP_STEP std::size_t GEN_FIND_FILE_CACHE::slot_of(NAME const& name) const {
    std::size_t const mask = m_slots.size() - 1;
    std::size_t i = first_slot(name.hash);
    while (m_slots[i].is_used && !is_of(m_slots[i], name))
        i = (i + 1) & mask;
    return i;
}

// The slot of the name, or null.
LOOKUP_STEP auto GEN_FIND_FILE_CACHE::used_slot(STR const& name) const -> SLOT const* {
    if (m_slots.empty())
        return nullptr;
    SLOT const& slot = m_slots[slot_of(NAME(name))];
    return slot.is_used ? &slot : nullptr;
}

LOOKUP_STEP FIO_PATH GEN_FIND_FILE_CACHE::path_of(SLOT const& slot) const {
    return FIO_PATH(STR(m_texts.data() + slot.texts + slot.name_size, slot.path_size),
                    slot.path_name, slot.path_extension, slot.path_separator);
}

std::optional<FIO_PATH> GEN_FIND_FILE_CACHE::find(STR const& name) const {
    SLOT const* const slot = used_slot(name);
    return slot != nullptr ? std::optional(path_of(*slot)) : std::nullopt;
}

void GEN_FIND_FILE_CACHE::insert(STR const& name, FIO_PATH const& path) {
    if (m_size == m_slots.size() / 8 * 7)
        grow();
    NAME const key(name);
    SLOT& slot = m_slots[slot_of(key)];
    if (slot.is_used)
        return;
    STR const& text = path.m_text;
    slot = {.hash = key.hash,
            .is_used = true,
            .path_separator = path.m_separator,
            .texts = m_texts.size(),
            .name_size = key.size,
            .path_size = text.size(),
            .path_name = path.m_name,
            .path_extension = path.m_extension};
    m_texts.insert(m_texts.end(), key.text, key.text + key.size);
    m_texts.insert(m_texts.end(), text.begin(), text.end());
    ++m_size;
}

void GEN_FIND_FILE_CACHE::grow() {
    MEM_VECTOR<SLOT> const old = std::exchange(m_slots, {});
    m_slots.resize(old.empty() ? 8 : old.size() * 2);
    m_shift -= old.empty() ? 3U : 1U;
    std::size_t const mask = m_slots.size() - 1;
    for (SLOT const& slot : old) {
        if (!slot.is_used)
            continue;
        std::size_t i = first_slot(slot.hash);
        while (m_slots[i].is_used)
            i = (i + 1) & mask;
        m_slots[i] = slot;
    }
}

FIO_PATH gen_find_file_cache_assisted(STR const& name) {
    if (gen_find_file_cache == nullptr)
        gen_create_find_file_cache();
    if (auto const* const slot = gen_find_file_cache->used_slot(name); slot != nullptr)
        return gen_find_file_cache->path_of(*slot);
    FIO_PATH path = gen_find_file(name);
    if (gen_find_file_cache != nullptr) [[likely]] // whoever was told of an error may destroy it
        gen_find_file_cache->insert(name, path);
    return path;
}

void gen_create_find_file_cache() {
    gen_replace_owned(gen_find_file_cache);
}

void gen_destroy_find_file_cache() {
    gen_release_owned(gen_find_file_cache);
}
