// The lines that are added to a file while it is read.
#pragma once

#include "support/bytes.h"

#include <string>

namespace testing_support {

class FileTail {
public:
    explicit FileTail(std::wstring path) : path_(std::move(path)) {}

    // The whole lines that came since the last call, without their line feeds; UTF-8 in the file.
    // None while there is no file.
    Lines newLines();

private:
    const std::wstring path_;
    unsigned long long offset_ = 0; // of the first byte that was not given
};

} // namespace testing_support
