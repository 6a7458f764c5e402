// Shared by the measurements over operation chains: their lengths, and how the figures grow with
// the length.
#pragma once

#include "bench/rows.h"

namespace bench {

struct ChainLength {
    size_t operations;
    size_t rounds; // of a paired timing
};

constexpr ChainLength chainLengths[] = {{100, 41}, {300, 21}, {1000, 15}, {3000, 11}, {10000, 11}};

// The figures of one chain.
struct ChainFigures {
    ChainLength chain;
    Pair time;
    size_t peakBytes; // see counted_heap.h
};

using Growth = std::vector<ChainFigures>;

// Times the add-in's work against the system calls only, on a chain of this length.
ChainFigures measureChain(ChainLength chain, const Work& ours, const Work& bare);

// For each chain the ratio of the times, which has a limit, and the bytes per operation; then both
// for the longest chain relative to the chain of 1,000.
Rows growthRows(const std::string& what, const Growth& growth, double timeLimit);

// The lines of a file with CR LF line ends, each with a line feed.
std::vector<std::string> linesOfFile(const std::wstring& path);

// Writes such a file with the calls that the add-in makes for it.
void writeLinesBare(const std::wstring& path, const std::vector<std::string>& lines);

} // namespace bench
