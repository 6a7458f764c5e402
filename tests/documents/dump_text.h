// Dumps as text: read from a page's block, and written as the block should stand.
#pragma once

#include "documents/dump.h"
#include "documents/fenced_block.h"

namespace documents {

// A block's dump, or what is wrong with it: "line 12: offset 07 where 05 is due".
struct ReadDump {
    Dump dump;
    std::string fault; // empty when the dump is sound
};
ReadDump readDump(const FencedBlock& block);

// The block with its fences, its columns in line.
std::string asBlock(const Dump& dump);

} // namespace documents
