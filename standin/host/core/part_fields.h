// The keys of part files that map to one field of a record. Reading and writing use the same table
// for each record, so they support the same keys.
#pragma once

#include "core/part.h"
#include "core/part_values.h"

#include <cstdint>
#include <span>
#include <variant>

namespace standin {

template <class Record>
using Member =
    std::variant<std::int16_t Record::*, std::int32_t Record::*, double Record::*, point3 Record::*,
                 std::wstring Record::*, wchar_t (Record::*)[260], wchar_t (Record::*)[200]>;

template <class Record>
struct Field {
    std::string_view key;
    Member<Record> member;
};

template <class Record>
using Fields = std::span<const Field<Record>>;

Fields<Part> partFields();
Fields<Plane> planeFields();
Fields<TpGroup> groupFields();
Fields<tp_tool_lead> toolLeadFields();
Fields<tp_tool> toolRestFields();
Fields<operation> operationFields();
Fields<PartOperation> operationRestFields();

// One bit for each key that was already read in a section.
using SeenKeys = std::uint64_t;

enum class FieldOutcome { read, unknownKey, refused };

// Reads the value into the key's field. Refuses a repeated key. `firstBit` separates the bits of
// several tables in one section.
template <class Record>
FieldOutcome readField(Fields<Record> fields, Record& record, std::string_view key,
                       std::string_view notation, SeenKeys& seen, unsigned firstBit = 0)
{
    for (size_t place = 0; place < fields.size(); ++place) {
        if (fields[place].key != key)
            continue;
        const SeenKeys mark = SeenKeys{1} << (firstBit + place);
        const bool again = (seen & mark) != 0;
        seen |= mark;
        const bool isRead = std::visit(
            [&](auto member) { return readValue(notation, record.*member); }, fields[place].member);
        return isRead && !again ? FieldOutcome::read : FieldOutcome::refused;
    }
    return FieldOutcome::unknownKey;
}

// Writes a line for each field that differs from the default record; false if a value has no
// notation.
template <class Record>
bool writeFields(std::string& out, Fields<Record> fields, const Record& record,
                 const Record& defaults, std::string_view prefix = {})
{
    bool allWritten = true;
    for (const Field<Record>& field : fields) {
        std::visit(
            [&](auto member) {
                if (sameValue(record.*member, defaults.*member))
                    return;
                out.append(prefix).append(field.key).append(" = ");
                allWritten = writeValue(out, record.*member) && allWritten;
                out += '\n';
            },
            field.member);
    }
    return allWritten;
}

} // namespace standin
