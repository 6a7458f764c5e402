// A tool data record put together plainly: each value through a stream in the classic locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fuzzing {

// Integers in decimal; floating-point numbers in the stream's standard notation.
std::string streamed(std::int64_t number);
std::string streamed(double number);
// 16 upper-case hexadecimal digits.
std::string streamedHandle(std::uint64_t address);
// The low byte of each unit, up to the first that is 0.
std::string lowBytes(const std::wstring& text);

// The record, or nothing when it is 2048 characters or longer.
std::optional<std::string> withinBound(const std::string& record);

} // namespace fuzzing
