// What guards the stack frames. Microsoft's compilers bring their own.
#if !defined(_MSC_VER)

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <windows.h>

extern "C" std::uintptr_t __stack_chk_guard;

namespace {

constexpr std::uintptr_t withoutAStart = 0x2B992DDFA200;

void overwriteTheFrame(size_t bytes)
{
    volatile char text[16]{};
    for (size_t place = 0; place < bytes; ++place)
        text[place] = 'x';
}

} // namespace

TEST(StackGuard, isAnotherValueAtEachStart)
{
    EXPECT_NE(__stack_chk_guard, withoutAStart);
    EXPECT_EQ(__stack_chk_guard & 0xFF, 0u); // a copied text ends before it
}

TEST(StackGuard, endsTheProgramWhenItIsOverwritten)
{
    EXPECT_EXIT(overwriteTheFrame(64),
                ::testing::ExitedWithCode(static_cast<int>(STATUS_STACK_BUFFER_OVERRUN)), "");
}

#endif
