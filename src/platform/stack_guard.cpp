// The value that guards the stack frames of a program or a library, and what happens when the guard
// of a frame has been overwritten. For the compilers whose own runtime opens the system's
// cryptographic provider at each start: that takes as long as the rest of a small program's start,
// and loads four more libraries.
#include <cstdint>
#include <initializer_list>
#include <windows.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the names that compiled code uses
extern "C" {

std::uintptr_t __stack_chk_guard = 0x2B992DDFA200;

// Ends the process with 0xC0000409 without running any more of its code.
[[noreturn]] void __stack_chk_fail()
{
    asm volatile("int $0x29" : : "c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE)); // __fastfail
    __builtin_unreachable();
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

namespace {

// Runs before the frames of other functions are guarded.
[[gnu::constructor, gnu::no_stack_protector]] void chooseGuard()
{
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    // Input that was prepared before this start cannot know all of them; the address is random too.
    // Visual C++ starts with the same.
    std::uint64_t guard = reinterpret_cast<std::uintptr_t>(&time);
    for (const std::uint64_t source :
         {std::uint64_t{time.dwLowDateTime}, std::uint64_t{time.dwHighDateTime},
          static_cast<std::uint64_t>(counter.QuadPart), std::uint64_t{GetCurrentProcessId()},
          std::uint64_t{GetCurrentThreadId()}}) {
        guard = (guard ^ source) * 0x9E3779B97F4A7C15; // spreads each source over all bits
        guard ^= guard >> 32;
    }
    constexpr std::uint64_t endOfText = 0xFF; // a copied text ends before the guard
    __stack_chk_guard = guard & ~endOfText;
}

} // namespace
