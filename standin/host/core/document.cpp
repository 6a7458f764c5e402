#include "core/document.h"

#include "core/lock.h"
#include "core/part_file.h"
#include "core/session.h"
#include "core/text.h"

#include <deque>
#include <mutex>
#include <utility>

namespace standin {

namespace {

struct Document {
    Lock lock;
    std::shared_ptr<Part> part = std::make_shared<Part>();
    std::deque<std::shared_ptr<Part>> replaced;
    HostSettings settings;
};

Document& theDocument()
{
    static Document document;
    return document;
}

// Call with the document's lock held.
void replacePart(Document& document, std::shared_ptr<Part> part)
{
    constexpr size_t keptAlive = 4;
    document.replaced.push_back(std::exchange(document.part, std::move(part)));
    if (document.replaced.size() > keptAlive)
        document.replaced.pop_front();
}

} // namespace

std::shared_ptr<Part> openPart()
{
    Document& document = theDocument();
    const std::scoped_lock guard(document.lock);
    return document.part;
}

bool openDocument(const std::wstring& path)
{
    std::shared_ptr<Part> part = readPartFile(path);
    if (!part)
        return false;
    {
        Document& document = theDocument();
        const std::scoped_lock guard(document.lock);
        replacePart(document, std::move(part));
        document.settings.databaseChanged = false;
        setFieldText(geo_filename, path);
    }
    repaintView();
    return true;
}

bool saveDocument(const std::wstring& path)
{
    if (!writePartFile(*openPart(), path))
        return false;
    setHostSetting(&HostSettings::databaseChanged, false);
    return true;
}

void closeDocument()
{
    {
        Document& document = theDocument();
        const std::scoped_lock guard(document.lock);
        replacePart(document, std::make_shared<Part>());
    }
    repaintView();
}

void startNewDocument()
{
    {
        Document& document = theDocument();
        const std::scoped_lock guard(document.lock);
        replacePart(document, std::make_shared<Part>());
        document.settings.databaseChanged = false;
        setFieldText(geo_filename, L"");
    }
    repaintView();
}

std::wstring documentName()
{
    const std::scoped_lock guard(theDocument().lock);
    return std::wstring(fieldText(geo_filename));
}

void setDocumentName(const std::wstring& name)
{
    {
        const std::scoped_lock guard(theDocument().lock);
        setFieldText(geo_filename, name);
    }
    repaintView();
}

HostSettings hostSettings()
{
    Document& document = theDocument();
    const std::scoped_lock guard(document.lock);
    return document.settings;
}

void setHostSetting(bool HostSettings::*setting, bool value)
{
    {
        Document& document = theDocument();
        const std::scoped_lock guard(document.lock);
        document.settings.*setting = value;
    }
    repaintView();
}

void setHostSetting(std::wstring HostSettings::*setting, const std::wstring& value)
{
    {
        Document& document = theDocument();
        const std::scoped_lock guard(document.lock);
        document.settings.*setting = value;
    }
    repaintView();
}

void setSetupSheetFiles(const std::vector<std::wstring>& files)
{
    Document& document = theDocument();
    const std::scoped_lock guard(document.lock);
    document.settings.setupSheetFiles = files;
}

void resetDocument()
{
    Document& document = theDocument();
    const std::scoped_lock guard(document.lock);
    replacePart(document, std::make_shared<Part>());
    document.settings = {};
    setFieldText(geo_filename, L"");
}

} // namespace standin
