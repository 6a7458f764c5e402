#include "incoming/checkout_command.h"

#include "formats/checkout_answer.h"
#include "incoming/exchange_file.h"
#include "incoming/load.h"
#include "host/host.h"
#include "companion/process.h"
#include "host/host_exceptions.h"
#include "host/message_box.h"
#include "incoming/pending_request.h"
#include "shared_state.h"
#include "platform/text.h"
#include "incoming/window_posts.h"

#include <cstdio>

namespace torvapdm {

namespace {

void forgetCheckedInFile()
{
    currentRequestId = 0;
    currentZemId = 0;
    fileTypePrefix.clear();
    // Deliberate: every C stream of the process goes. One would expect the file's own alone;
    // none of the part's streams is left open.
    _fcloseall();
    callHost([] { m_fclose(nullptr, 0, nullptr); });
    wakeMessageWindow();
}

} // namespace

CheckoutCommand parseAnswer(const std::wstring& text)
{
    const CheckoutAnswer answer = interpretAnswer(text, fileTypePrefix);
    if (answer.kind == CheckoutAnswer::Kind::checkIn)
        forgetCheckedInFile();
    return {answer.id, answer.path};
}

// Deliberate: the message stands here twice. One would expect one test; each is kept with its own.
void loadAnsweredFile(const CheckoutCommand& command)
{
    if (command.id == 0 || command.path.empty()) {
        showMessage(translateText(0, L"Failed to load file."));
        return;
    }
    if (!loadFile(command.path)) {
        showMessage(translateText(0, L"Failed to load file."));
        return;
    }
    currentFilePath.assign(command.path);
    currentZemId = static_cast<std::uint32_t>(command.id);
}

int requestCheckout()
{
    clearOpenRequest();
    if (!ensureCompanionRunning())
        return 0;
    const std::wstring exchangeFile = makeExchangeFileName();
    launchCompanion(L"--checkout \"" + exchangeFile + L"\"", false);
    const std::wstring answer = readAnswer(exchangeFile);
    if (!answer.empty())
        loadAnsweredFile(parseAnswer(answer));
    return 0;
}

} // namespace torvapdm
