// A C stream with its owner.
#pragma once

#include <cstdio>
#include <memory>

namespace torvapdm {

struct StreamCloser {
    void operator()(FILE* stream) const { std::fclose(stream); }
};

// An open stream, closed with its owner; null when there is none.
using FileStream = std::unique_ptr<FILE, StreamCloser>;

} // namespace torvapdm
