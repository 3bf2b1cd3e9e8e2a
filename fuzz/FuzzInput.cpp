#include "FuzzInput.h"

#include <cstdio>

void fuzzFailure(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: fuzz check failed: %s\n", file, line, condition);
    std::fflush(stderr);
    __builtin_trap();
}
