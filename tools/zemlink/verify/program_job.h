// The processes that zemlink starts.
#pragma once

#include "peer/handle.h"

#include <string>
#include <vector>

namespace zemlink {

// The exit code of a process that is ended from here.
inline constexpr UINT endedByZemlink = 98;

// Ends all its processes, and those that they have started, with this object or with zemlink,
// however that ends.
class ProgramJob {
public:
    // Throws std::runtime_error.
    ProgramJob();
    ~ProgramJob() { end(); }
    ProgramJob(const ProgramJob&) = delete;
    ProgramJob& operator=(const ProgramJob&) = delete;

    // Starts the program with these arguments; its window is requested as hosts do: as hidden if
    // there are arguments. The handle is valid as long as this object. Throws std::runtime_error.
    HANDLE start(const std::wstring& program, const std::wstring& arguments);
    // The same, with its window requested like this (a value of ShowWindow).
    HANDLE start(const std::wstring& program, const std::wstring& arguments, WORD show);

    // Whether no process of it is running.
    bool isEmpty() const;
    bool contains(HANDLE process) const;
    // Ends all processes and waits until they have ended.
    void end();

private:
    peer::OwnHandle job_;
    std::vector<peer::OwnHandle> started_{};
};

bool hasEnded(HANDLE process);

// `it ended with exit code 3`, `it ended with exit code C0000005`
std::string endText(HANDLE process);

} // namespace zemlink
