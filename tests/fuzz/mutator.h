// Creates inputs from a target's seeds; the same random numbers give the same inputs. The
// coverage-guided fuzzer has better mutators of its own.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace fuzzing {

// Returns a seed with a few changes: bits flipped, bytes and tokens inserted, pieces removed or
// copied from another seed.
inline std::string mutated(const std::vector<std::string>& seeds,
                           const std::vector<std::string>& tokens, std::mt19937_64& random)
{
    const auto anyOf = [&](const auto& choices) { return choices[random() % choices.size()]; };
    std::string bytes = anyOf(seeds);
    for (auto left = 1 + random() % 6; left > 0; --left) {
        const size_t at = random() % (bytes.size() + 1);
        const std::string other = anyOf(seeds);
        const std::string pieces[] = {std::string(1, static_cast<char>(random())), anyOf(tokens),
                                      other.substr(random() % (other.size() + 1))};
        const std::string& piece = pieces[random() % 3];
        switch (random() % 4) {
        case 0:
            bytes.insert(at, piece);
            break;
        case 1:
            bytes.replace(at, piece.size(), piece);
            break;
        case 2:
            bytes.erase(at, random() % (bytes.size() + 1));
            break;
        default:
            if (at < bytes.size())
                bytes[at] = static_cast<char>(bytes[at] ^ 1 << random() % 8);
        }
    }
    return bytes;
}

} // namespace fuzzing
