#include "companion/standard_input.h"

#include <cstdio>

namespace torvapdm {

void drainStandardInputLine()
{
    int character;
    do
        character = std::getchar();
    while (character != '\n' && character != EOF);
}

} // namespace torvapdm
