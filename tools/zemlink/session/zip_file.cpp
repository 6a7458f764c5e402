#include "tools/zemlink/session/zip_file.h"

#include <contrib/minizip/unzip.h>
#include <contrib/minizip/zip.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace zemlink {
namespace {

// The library reads and writes through these functions; its own take no Unicode paths. The memory
// is both what it calls the opaque value and what it calls the stream.
struct Memory {
    std::string written{};
    std::string_view read{};
    std::uint64_t at = 0;

    std::uint64_t size() const { return read.data() ? read.size() : written.size(); }
};

Memory& memoryOf(voidpf stream)
{
    return *static_cast<Memory*>(stream);
}

voidpf openMemory(voidpf opaque, const void*, int)
{
    return opaque;
}

uLong readMemory(voidpf, voidpf stream, void* buffer, uLong size)
{
    Memory& memory = memoryOf(stream);
    if (memory.at > memory.read.size())
        return 0;
    const size_t count = std::min<size_t>(size, memory.read.size() - memory.at);
    std::memcpy(buffer, memory.read.data() + memory.at, count);
    memory.at += count;
    return static_cast<uLong>(count);
}

uLong writeMemory(voidpf, voidpf stream, const void* buffer, uLong size)
{
    Memory& memory = memoryOf(stream);
    try {
        if (memory.written.size() < memory.at + size)
            memory.written.resize(memory.at + size);
    } catch (const std::exception&) {
        return 0; // which the library reports as an error
    }
    std::memcpy(memory.written.data() + memory.at, buffer, size);
    memory.at += size;
    return size;
}

ZPOS64_T tellMemory(voidpf, voidpf stream)
{
    return memoryOf(stream).at;
}

long seekMemory(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    Memory& memory = memoryOf(stream);
    const std::uint64_t from = origin == ZLIB_FILEFUNC_SEEK_CUR   ? memory.at
                               : origin == ZLIB_FILEFUNC_SEEK_END ? memory.size()
                                                                  : 0;
    memory.at = from + offset;
    return 0;
}

int closeMemory(voidpf, voidpf)
{
    return 0;
}

int errorOfMemory(voidpf, voidpf)
{
    return 0;
}

zlib_filefunc64_def functionsOf(Memory& memory)
{
    return {openMemory, readMemory,  writeMemory,   tellMemory,
            seekMemory, closeMemory, errorOfMemory, &memory};
}

void check(bool isFine, const char* cause)
{
    if (!isFine)
        throw std::runtime_error(cause);
}

// ---- Writing ------------------------------------------------------------------------------------

constexpr uLong firstDate = 1 << 21 | 1 << 16; // 1980-01-01
constexpr uLong namesAreUtf8 = 1 << 11;

constexpr const char* isNotWritten = "the zip file cannot be written";

struct ZipCloser {
    void operator()(voidp zip) const { zipClose(zip, nullptr); }
};

bool addEntry(zipFile zip, const ZipEntry& entry)
{
    zip_fileinfo information{};
    information.dosDate = firstDate;
    return zipOpenNewFileInZip4_64(zip, entry.name.c_str(), &information, nullptr, 0, nullptr, 0,
                                   nullptr, Z_DEFLATED, Z_DEFAULT_COMPRESSION, 0, -MAX_WBITS,
                                   DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY, nullptr, 0, 0, namesAreUtf8,
                                   0) == ZIP_OK &&
           zipWriteInFileInZip(zip, entry.bytes.data(),
                               static_cast<unsigned>(entry.bytes.size())) == ZIP_OK &&
           zipCloseFileInZip(zip) == ZIP_OK;
}

// ---- Reading ------------------------------------------------------------------------------------

constexpr const char* isDamaged = "the zip file is damaged";
constexpr std::uint64_t largestRatio =
    1032; // that the compression reaches; a forged size claims more

struct UnzipCloser {
    void operator()(voidp zip) const { unzClose(zip); }
};

ZipEntry readEntry(unzFile zip, std::uint64_t mostBytes)
{
    unz_file_info64 information{};
    char name[1024] = "";
    check(unzGetCurrentFileInfo64(zip, &information, name, sizeof name - 1, nullptr, 0, nullptr,
                                  0) == UNZ_OK &&
              information.size_filename < sizeof name - 1,
          isDamaged);
    check(information.uncompressed_size <= mostBytes, "the zip file holds too much");
    check(information.uncompressed_size / largestRatio <= information.compressed_size, isDamaged);
    ZipEntry entry{name, std::string(static_cast<size_t>(information.uncompressed_size), '\0')};
    check(unzOpenCurrentFile(zip) == UNZ_OK, isDamaged);
    const int size = static_cast<int>(entry.bytes.size());
    const int count = unzReadCurrentFile(zip, entry.bytes.data(), static_cast<unsigned>(size));
    const int closing = unzCloseCurrentFile(zip); // compares the checksum
    check(count == size && closing == UNZ_OK, isDamaged);
    return entry;
}

} // namespace

std::string formatZip(const std::vector<ZipEntry>& entries)
{
    Memory memory;
    zlib_filefunc64_def functions = functionsOf(memory);
    std::unique_ptr<void, ZipCloser> zip(
        zipOpen2_64(nullptr, APPEND_STATUS_CREATE, nullptr, &functions));
    check(zip != nullptr, isNotWritten);
    for (const ZipEntry& entry : entries)
        check(addEntry(zip.get(), entry), isNotWritten);
    check(zipClose(zip.release(), nullptr) == ZIP_OK, isNotWritten);
    return std::move(memory.written);
}

std::vector<ZipEntry> parseZip(std::string_view bytes)
{
    check(!bytes.empty(), "it is empty");
    Memory memory;
    memory.read = bytes;
    zlib_filefunc64_def functions = functionsOf(memory);
    const std::unique_ptr<void, UnzipCloser> zip(unzOpen2_64(nullptr, &functions));
    check(zip != nullptr, "it is not a zip file");
    std::vector<ZipEntry> entries;
    std::uint64_t left = mostUnpackedBytes;
    int next = unzGoToFirstFile(zip.get());
    for (; next == UNZ_OK; next = unzGoToNextFile(zip.get())) {
        entries.push_back(readEntry(zip.get(), left));
        left -= entries.back().bytes.size();
    }
    check(next == UNZ_END_OF_LIST_OF_FILE, isDamaged);
    return entries;
}

} // namespace zemlink
