#pragma once

/// The register of gen_crc_generator, taken over many bytes at a time.

#include <cstddef>
#include <cstdint>

/// The register after @p size more bytes, in the way that is the fastest here.
std::uint32_t crc_update(std::uint32_t crc, char const* data, std::size_t size);
