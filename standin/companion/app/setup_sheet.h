// The setup sheet of a host, as XML:
//
//   <setupSheet file="C:\work\bracket.mcam" title="…" machine="C:\Machines\Mill.mcam-mmd">
//     <operations count="1" seconds="83.5">
//       <operation id="3" type="Contour" group="Top" depth="-12.5" ncFile="BRACKET" seconds="83.5">
//         <tool number="4" diameter="10" cornerRadius="0.5" feed="900" comment="End mill"/>
//       </operation>
//     </operations>
//   </setupSheet>
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace companion {

// Values are kept as written; a missing one is empty.
struct SheetTool {
    std::wstring number, diameter, cornerRadius, feed, comment;
};

struct SheetOperation {
    std::wstring id, type, group, depth, ncFile, seconds;
    SheetTool tool;
};

struct SetupSheet {
    std::wstring file, title, machine, seconds;
    std::vector<SheetOperation> operations;
};

// Empty when the text is not a complete document of this kind.
std::optional<SetupSheet> readSetupSheet(std::wstring_view text);

// The rows of the window's two lists: the operations in file order (id, type, group, tool, depth,
// NC file, time), and the different tools in order of first use (number, diameter, corner radius,
// feed, comment). A tool without a number is left out.
using SheetRows = std::vector<std::vector<std::wstring>>;
SheetRows operationRows(const SetupSheet& sheet);
SheetRows toolRows(const SetupSheet& sheet);

// `1:24` for "83.5", `1:00:00` for "3600"; any other text is not changed.
std::wstring durationText(const std::wstring& seconds);

} // namespace companion
