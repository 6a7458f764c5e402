#include "fuzz/mutator.h"

#include <algorithm>

using namespace std::string_view_literals;

namespace fuzzing {

namespace {

// Bytes with a meaning for at least one function.
constexpr std::string_view telling =
    "\0\t\n\r \"+-./09:;=AZ\\_az|~\x01\x1F\x7F\x80\xBB\xBF\xEF\xFE\xFF"sv;

char anyByte(Random& random)
{
    return random.isOneIn(2) ? telling[random.below(telling.size())]
                             : static_cast<char>(random.below(256));
}

const std::string& anyOf(const std::vector<std::string>& texts, Random& random)
{
    return texts[random.below(texts.size())];
}

// A power of two, or the number before or after it, as bytes.
std::string limitNumber(Random& random)
{
    const unsigned bits = static_cast<unsigned>(random.below(64));
    const std::uint64_t number = (std::uint64_t{1} << bits) - 1 + random.below(3);
    std::string bytes;
    for (unsigned i = 0; i < (random.isOneIn(2) ? 4u : 8u); ++i)
        bytes += static_cast<char>(number >> 8 * i & 0xFF);
    return bytes;
}

void overwrite(std::string& bytes, const std::string& piece, Random& random)
{
    const size_t at = random.below(bytes.size() + 1);
    bytes.replace(at, std::min(piece.size(), bytes.size() - at), piece);
}

void change(std::string& bytes, const Material& material, Random& random)
{
    const auto insert = [&](const std::string& piece) {
        bytes.insert(random.below(bytes.size() + 1), piece);
    };
    const std::uint64_t kind = random.below(9);
    if (kind == 0 && !bytes.empty()) {
        char& byte = bytes[random.below(bytes.size())];
        byte = static_cast<char>(byte ^ 1 << random.below(8));
    } else if (kind == 1) {
        overwrite(bytes, {anyByte(random)}, random);
    } else if (kind == 2) {
        insert({anyByte(random)});
    } else if (kind == 3 || kind == 4) { // removes or duplicates a piece
        const size_t at = random.below(bytes.size() + 1);
        const size_t length = random.below(bytes.size() - at + 1);
        if (kind == 3)
            bytes.erase(at, length);
        else
            insert(bytes.substr(at, std::min<size_t>(length, 64)));
    } else if (kind == 5) {
        insert(anyOf(material.tokens, random));
    } else if (kind == 6) {
        overwrite(bytes, anyOf(material.tokens, random), random);
    } else if (kind == 7) {
        overwrite(bytes, limitNumber(random), random);
    } else if (kind == 8) { // uses the end of a seed
        const std::string& other = anyOf(material.seeds, random);
        bytes.resize(random.below(bytes.size() + 1));
        bytes += other.substr(random.below(other.size() + 1));
    }
}

} // namespace

std::string mutated(const Material& material, Random& random)
{
    std::string bytes;
    if (random.isOneIn(16)) {
        bytes.resize(random.below(64));
        std::ranges::generate(bytes, [&] { return anyByte(random); });
    } else {
        bytes = anyOf(material.seeds, random);
    }
    for (size_t left = 1 + random.below(6); left > 0; --left)
        change(bytes, material, random);
    return bytes;
}

} // namespace fuzzing
