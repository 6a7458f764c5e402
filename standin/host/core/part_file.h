// Part files on disk.
#pragma once

#include "core/part.h"

#include <memory>
#include <string>

namespace standin {

// Null if the file cannot be read or breaks a rule of the format (docs/part-file.md).
std::shared_ptr<Part> readPartFile(const std::wstring& path);

// True on success. The file is written under a temporary name and then renamed, so after a failure
// an earlier file is unchanged.
bool writePartFile(const Part& part, const std::wstring& path);

} // namespace standin
