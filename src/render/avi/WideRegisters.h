#pragma once

/// Put before a function of plain loops that wider registers shorten: it is compiled for them too, and the form
/// that the processor can run is taken when the program starts. The results are the same.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
#define VELMOR_FOR_WIDE_REGISTERS __attribute__((target_clones("avx2", "default")))
#else
#define VELMOR_FOR_WIDE_REGISTERS
#endif
