#include "fuzz/mutator.h"

#include <algorithm>

using namespace std::string_view_literals;

namespace fuzzing {

namespace {

constexpr size_t longestRandomBytes = 64;
constexpr size_t longestDoubledPiece = 64;
constexpr size_t mostChanges = 6;

// Bytes that mean something to one decision or another.
constexpr std::string_view telling =
    "\0\t\n\r \"+-./09:;=AZ\\_az|~\x01\x1F\x7F\x80\xBB\xBF\xEF\xFE\xFF"sv;

struct Piece {
    size_t at;
    size_t length;
};

Piece anyPiece(const std::string& bytes, Random& random)
{
    const size_t at = random.below(bytes.size() + 1);
    return {at, random.below(bytes.size() - at + 1)};
}

char anyByte(Random& random)
{
    return random.isOneIn(2) ? telling[random.below(telling.size())]
                             : static_cast<char>(random.below(256));
}

const std::string& anyOf(const std::vector<std::string>& texts, Random& random)
{
    static const std::string none;
    return texts.empty() ? none : texts[random.below(texts.size())];
}

std::string randomBytes(Random& random)
{
    std::string bytes(random.below(longestRandomBytes), '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return anyByte(random); });
    return bytes;
}

// Just about a limit of some width, as bytes.
std::string limitNumber(Random& random)
{
    const unsigned bits = static_cast<unsigned>(random.below(64));
    const std::uint64_t number = (std::uint64_t{1} << bits) - 1 + random.below(3);
    std::string bytes;
    for (unsigned i = 0; i < (random.isOneIn(2) ? 4u : 8u); ++i)
        bytes += static_cast<char>(number >> 8 * i & 0xFF);
    return bytes;
}

void turnBit(std::string& bytes, Random& random)
{
    if (bytes.empty())
        return;
    char& byte = bytes[random.below(bytes.size())];
    byte = static_cast<char>(byte ^ 1 << random.below(8));
}

void overwrite(std::string& bytes, const std::string& piece, Random& random)
{
    const size_t at = random.below(bytes.size() + 1);
    bytes.replace(at, std::min(piece.size(), bytes.size() - at), piece);
}

void insert(std::string& bytes, const std::string& piece, Random& random)
{
    bytes.insert(random.below(bytes.size() + 1), piece);
}

void losePiece(std::string& bytes, Random& random)
{
    const Piece piece = anyPiece(bytes, random);
    bytes.erase(piece.at, piece.length);
}

void doublePiece(std::string& bytes, Random& random)
{
    const Piece piece = anyPiece(bytes, random);
    insert(bytes, bytes.substr(piece.at, std::min(piece.length, longestDoubledPiece)), random);
}

// The beginning of this input and the end of a seed.
void splice(std::string& bytes, const std::string& other, Random& random)
{
    const size_t kept = random.below(bytes.size() + 1);
    bytes = bytes.substr(0, kept) + other.substr(random.below(other.size() + 1));
}

void change(std::string& bytes, const Material& material, Random& random)
{
    switch (random.below(9)) {
    case 0:
        return turnBit(bytes, random);
    case 1:
        return overwrite(bytes, {anyByte(random)}, random);
    case 2:
        return insert(bytes, {anyByte(random)}, random);
    case 3:
        return losePiece(bytes, random);
    case 4:
        return doublePiece(bytes, random);
    case 5:
        return insert(bytes, anyOf(material.tokens, random), random);
    case 6:
        return overwrite(bytes, anyOf(material.tokens, random), random);
    case 7:
        return overwrite(bytes, limitNumber(random), random);
    default:
        return splice(bytes, anyOf(material.seeds, random), random);
    }
}

} // namespace

std::string mutated(const Material& material, Random& random)
{
    std::string bytes = random.isOneIn(16) ? randomBytes(random) : anyOf(material.seeds, random);
    for (size_t left = 1 + random.below(mostChanges); left > 0; --left)
        change(bytes, material, random);
    return bytes;
}

} // namespace fuzzing
