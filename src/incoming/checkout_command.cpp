#include "incoming/checkout_command.h"

#include "companion/process.h"
#include "formats/checkout_answer.h"
#include "formats/command_lines.h"
#include "host/message_box.h"
#include "incoming/check_in.h"
#include "incoming/incoming_state.h"
#include "incoming/load.h"
#include "incoming/pending_request.h"
#include "platform/files.h"

#include <cstdio>
#include <ctime>

namespace torvapdm {

namespace {

constexpr int nameAttempts = 1024;

// The folder with its trailing backslash; empty on failure.
std::wstring temporaryFolder()
{
    std::wstring folder;
    DWORD length = GetTempPathW(0, nullptr);
    while (length > folder.size()) {
        folder.resize(length);
        length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    }
    folder.resize(length);
    return folder;
}

void clearFileTypeAndCloseStreams()
{
    fileTypePrefix.clear();
    _fcloseall(); // Quirk Q19: every C stream of the process.
}

} // namespace

std::wstring makeExchangeFileName()
{
    const std::wstring folder = temporaryFolder();
    for (int attempt = 0; attempt < nameAttempts; ++attempt) {
        std::wstring path = formatAnswerPath(folder, _time64(nullptr));
        if (!fileExists(path))
            return path;
    }
    return {};
}

// Quirk Q17: CREATE_ALWAYS empties the file, the test looks at the listener's handle, bytes are
// counted as characters, and the file stays open. The Companion answers through the command file.
std::wstring readAnswer(const std::wstring& path)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (commandFile == INVALID_HANDLE_VALUE)
        return {};
    LARGE_INTEGER size{};
    GetFileSizeEx(file, &size);
    if (size.QuadPart > longestAnswer)
        return {};
    std::wstring text(static_cast<size_t>(size.QuadPart), L'\0');
    DWORD read = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(size.QuadPart), &read, nullptr);
    text.resize(read);
    return text;
}

CheckoutCommand parseAnswer(const std::wstring& text)
{
    const CheckoutAnswer answer = parseCheckoutAnswer(text, fileTypePrefix);
    if (answer.kind == CheckoutAnswer::Kind::checkIn)
        checkInDocument(clearFileTypeAndCloseStreams);
    return answer.file;
}

// Quirk Q20: two tests with the same message box.
void loadAnsweredFile(const CheckoutCommand& command)
{
    if (command.id == 0 || command.path.empty()) {
        showMessage(L"Failed to load file.");
        return;
    }
    if (!loadFile(command.path)) {
        showMessage(L"Failed to load file.");
        return;
    }
    currentFilePath.assign(command.path);
    currentZemId = static_cast<std::uint32_t>(command.id);
}

int runCheckoutCommand()
{
    clearPendingRequest();
    if (!ensureCompanionRunning())
        return 0;
    const std::wstring answerFile = makeExchangeFileName();
    launchCompanion(formatCheckoutArguments(answerFile), false);
    const std::wstring answer = readAnswer(answerFile);
    if (!answer.empty())
        loadAnsweredFile(parseAnswer(answer));
    return 0;
}

} // namespace torvapdm
