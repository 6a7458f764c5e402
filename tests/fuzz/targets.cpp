#include "fuzz/targets.h"

namespace fuzzing {

std::vector<Target> allTargets()
{
    return {checkoutAnswerTarget(),   commandTextTarget(),         commitTextsTarget(),
            decimalTarget(),          declaredVersionTarget(),     documentNameTarget(),
            exchangeFileNameTarget(), machineSettingsLineTarget(), ncImportLineTarget(),
            numbersTarget(),          queueTextsTarget(),          recentFileListTarget(),
            recordTextTarget(),       settingsLineTarget(),        setupSheetLineTarget(),
            sortedLinesTarget(),      toolColoursTarget(),         toolDrawingTarget(),
            toolRecordTarget(),       toolShadingTarget(),         toolsOptionTarget()};
}

} // namespace fuzzing
