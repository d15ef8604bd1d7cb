#pragma once

/// What the machine offers beyond SSE2, to choose the fast form of a routine once at load. The C
/// library is asked, which has looked already: asking the processor itself is slow on a virtual
/// one.

#include <cstdint>

#if defined(__clang__) // which lacks C's name in C++, where the C library's header uses it
#define _Bool bool
#endif
#include <sys/platform/x86.h>
#if defined(__clang__)
#undef _Bool
#endif

inline bool cpu_has_avx2() {
    return CPU_FEATURE_ACTIVE(AVX2);
}

inline bool cpu_has_carryless_multiplication() {
    return CPU_FEATURE_ACTIVE(PCLMULQDQ) && CPU_FEATURE_ACTIVE(SSE4_1);
}

/// Whether valgrind runs the process. It takes reading behind the end of a text for an error even
/// where no page ends, and so has to be given the forms that do not. The rotations and the exchange
/// are its agreed mark for a request: they leave a real processor as it was.
inline bool cpu_is_valgrind() {
    std::uintptr_t const request[6] = {0x1001, 0, 0, 0, 0, 0};
    std::uintptr_t answer = 0;
#if defined(__x86_64__)
    __asm__ volatile("rolq $3, %%rdi; rolq $13, %%rdi; rolq $61, %%rdi; rolq $51, %%rdi\n\t"
                     "xchgq %%rbx, %%rbx"
                     : "+d"(answer)
                     : "a"(request)
                     : "cc", "memory");
#else
    __asm__ volatile("roll $3, %%edi; roll $13, %%edi; roll $29, %%edi; roll $19, %%edi\n\t"
                     "xchgl %%ebx, %%ebx"
                     : "+d"(answer)
                     : "a"(request)
                     : "cc", "memory");
#endif
    return answer != 0;
}
