// Part files on disk.
#pragma once

#include "core/part.h"

#include <memory>
#include <string>

namespace standin {

// Null when the file cannot be read or breaks a rule of the format.
std::shared_ptr<Part> readPartFile(const std::wstring& path);

// True when the file stands there whole. It is written beside its place and then moved there: what
// was there before stays when anything fails.
bool writePartFile(const Part& part, const std::wstring& path);

} // namespace standin
