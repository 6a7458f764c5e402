// What is put into a tool data record: any number of pieces, each a kind and its value.
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_record.h"
#include "fuzz/targets.h"
#include "formats/record_text.h"

namespace fuzzing {

namespace {

using torvapdm::RecordText;

// Puts one piece into the record and gives the plain text of it.
std::string putPiece(Input& input, RecordText& record)
{
    switch (input.number<unsigned char>() % 5) {
    case 0: {
        const std::string_view text = input.field();
        put(record, text);
        return std::string(text);
    }
    case 1: {
        const auto number = input.number<std::int32_t>();
        put(record, "|I=", number);
        return "|I=" + streamed(std::int64_t{number});
    }
    case 2: {
        const auto number = input.number<double>();
        put(record, "|D=", number);
        return "|D=" + streamed(number);
    }
    case 3: {
        const auto address = input.number<std::uint64_t>();
        put(record, "|H=", reinterpret_cast<const wchar_t*>(address));
        return "|H=" + streamedHandle(address);
    }
    default: {
        const std::wstring text = input.wideField();
        putLowBytes(record, text);
        return lowBytes(text);
    }
    }
}

std::string checkRecordText(std::string_view bytes)
{
    Input input(bytes);
    RecordText record;
    std::string expected;
    while (!input.isAtEnd())
        expected += putPiece(input, record);
    Differences differences;
    differences.compare("record", contentOf(record), withinBound(expected));
    return differences.text();
}

std::string piece(char kind, const std::string& value)
{
    return kind + value;
}

} // namespace

Target recordTextTarget()
{
    const std::string zero("\0", 1);
    return {"record_text",
            checkRecordText,
            {piece('\0', "TOOLDATA\x1F") + piece('\1', raw(-5)) + piece('\2', raw(2.5e6)),
             piece('\2', raw(1e-6)) + piece('\2', raw(0.0001)) + piece('\2', raw(-0.5)),
             piece('\2', raw(999999.5)) + piece('\2', raw(1e300 * 1e10)) + piece('\2', raw(-0.0)),
             piece('\3', raw(std::uint64_t{0x000002A1F3C05E40})) + piece('\3', raw(~0ull)),
             piece('\4', "a|b\x01\x01\xC4"
                         "c\x1F") +
                 piece('\4', "x" + zero + "y\x1F"),
             piece('\0', std::string(2047, 'p')), piece('\0', std::string(2048, 'p')),
             piece('\0', std::string(2040, 'p') + '\x1F') + piece('\1', raw(1234))},
            {piece('\2', raw(1e6)), piece('\2', raw(123456.5)), piece('\1', raw(-2147483647 - 1)),
             std::string(500, 'q'), zero, "\x01\x01" + zero}};
}

} // namespace fuzzing
