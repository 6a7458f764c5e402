// System errors as text, other processes, paths and file times.
#pragma once

#include "peer/handle.h"
#include "tools/zemlink/reports/facts.h"

#include <cstdint>
#include <string>

namespace zemlink {

// `Access denied. (error 5)`, UTF-8.
std::string systemErrorText(std::uint32_t code);

// The result of a call: success, or this error code with its text.
Result resultOf(bool isFine, std::uint32_t code);

// True also for a process that the user may not open.
bool isRunning(std::uint32_t process);

// How long the process has been running; 0 when it is unknown.
std::uint64_t ageMs(std::uint32_t process);

// The path of the process's program; empty when it is unknown.
std::wstring programOf(std::uint32_t process);

// The absolute path. Other programs, which have other current directories, need it.
std::wstring fullPath(const std::wstring& path);

// In units of 100 ns since 1601.
std::uint64_t ticksOf(const FILETIME& time);

} // namespace zemlink
