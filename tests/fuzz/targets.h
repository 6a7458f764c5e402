// Every decision that the fuzzers drive, one file each.
#pragma once

#include "fuzz/target.h"

#include <vector>

namespace fuzzing {

Target checkoutAnswerTarget();
Target commandTextTarget();
Target commitTextsTarget();
Target decimalTarget();
Target declaredVersionTarget();
Target documentNameTarget();
Target exchangeFileNameTarget();
Target machineSettingsLineTarget();
Target ncImportLineTarget();
Target numbersTarget();
Target queueTextsTarget();
Target recentFileListTarget();
Target recordTextTarget();
Target settingsLineTarget();
Target setupSheetLineTarget();
Target sortedLinesTarget();
Target toolColoursTarget();
Target toolDrawingTarget();
Target toolRecordTarget();
Target toolShadingTarget();
Target toolsOptionTarget();

std::vector<Target> allTargets();

} // namespace fuzzing
