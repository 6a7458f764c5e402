// What the measurements over operation chains share: how long the chains are, and how the figures
// grow with them.
#pragma once

#include "bench/rows.h"

namespace bench {

struct ChainLength {
    size_t operations;
    size_t rounds; // of a timing in pairs
};

constexpr ChainLength chainLengths[] = {{100, 41}, {300, 21}, {1000, 15}, {3000, 11}, {10000, 11}};

// What one chain has shown.
struct ChainFigures {
    ChainLength chain;
    Pair time;
    size_t peakBytes; // see counted_heap.h
};

using Growth = std::vector<ChainFigures>;

// Times the add-in's work against the bare calls on a chain of this length.
ChainFigures measureChain(ChainLength chain, const Work& ours, const Work& bare);

// For each chain the time's ratio, which has a limit, and the bytes for each operation; then both
// of the longest chain to those of the chain of 1,000.
Rows growthRows(const std::string& what, const Growth& growth, double timeLimit);

// The lines of a file that ends them with carriage return and line feed, each with a line feed.
std::vector<std::string> linesOfFile(const std::wstring& path);

// Writes such a file with the calls that the add-in makes for it.
void writeLinesBare(const std::wstring& path, const std::vector<std::string>& lines);

} // namespace bench
