// Clang's own header, whose path the toolchain file passes, instead of Wine's.
#pragma once
#include TORVAPDM_CLANG_INTRIN
