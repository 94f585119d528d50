#pragma once

#include <cstdlib>

// A property a fuzz target asserts: when it does not hold, the target
// aborts, and libFuzzer keeps the input that broke it.
inline void check(bool condition)
{
    if (!condition)
        std::abort();
}
