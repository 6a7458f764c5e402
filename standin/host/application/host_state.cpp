// The host's state, by the names that scripts use.
#include "application/main_window.h"
#include "control.h"
#include "core/document.h"
#include "core/session.h"

#include <string_view>

namespace standin {

namespace {

std::wstring flagText(bool flag)
{
    return flag ? L"true" : L"false";
}

std::optional<bool> readFlag(const std::wstring& text)
{
    if (text == L"true")
        return true;
    if (text == L"false")
        return false;
    return std::nullopt;
}

template <bool HostSettings::*setting>
bool setFlag(const std::wstring& value)
{
    const std::optional<bool> flag = readFlag(value);
    if (flag)
        setHostSetting(setting, *flag);
    return flag.has_value();
}

template <bool HostSettings::*setting>
std::wstring flag()
{
    return flagText(hostSettings().*setting);
}

template <std::wstring HostSettings::*setting>
bool setText(const std::wstring& value)
{
    setHostSetting(setting, value);
    return true;
}

template <std::wstring HostSettings::*setting>
std::wstring text()
{
    return hostSettings().*setting;
}

bool setName(const std::wstring& value)
{
    setDocumentName(value);
    return true;
}

bool setTitle(const std::wstring& value)
{
    return SetWindowTextW(mainWindow(), value.c_str()) != FALSE;
}

std::wstring title()
{
    return titleOf(mainWindow());
}

bool setWindowEnabled(const std::wstring& value)
{
    const std::optional<bool> isEnabled = readFlag(value);
    if (isEnabled)
        EnableWindow(mainWindow(), *isEnabled);
    return isEnabled.has_value();
}

std::wstring windowEnabled()
{
    return flagText(IsWindowEnabled(mainWindow()) != FALSE);
}

bool setFiles(const std::wstring& value)
{
    std::vector<std::wstring> files;
    std::wstring_view rest = value;
    while (!rest.empty()) {
        const size_t end = rest.find(L';');
        files.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end == std::wstring_view::npos ? rest.size() : end + 1);
    }
    setSetupSheetFiles(files);
    return true;
}

std::wstring files()
{
    std::wstring joined;
    for (const std::wstring& file :
         hostSettings().setupSheetFiles.value_or(std::vector<std::wstring>()))
        joined.append(joined.empty() ? L"" : L";").append(file);
    return joined;
}

struct StateEntry {
    std::string_view name;
    bool (*set)(const std::wstring& value);
    std::wstring (*get)();
};

const StateEntry entries[] = {
    {"geo_filename", setName, documentName},
    {"db_changed", setFlag<&HostSettings::databaseChanged>, flag<&HostSettings::databaseChanged>},
    {"backplot", setFlag<&HostSettings::backplotActive>, flag<&HostSettings::backplotActive>},
    {"main_window_enabled", setWindowEnabled, windowEnabled},
    {"title", setTitle, title},
    {"nc_prefix", setText<&HostSettings::ncPrefix>, text<&HostSettings::ncPrefix>},
    {"nc_suffix", setText<&HostSettings::ncSuffix>, text<&HostSettings::ncSuffix>},
    {"setup_sheet_files", setFiles, files},
};

const StateEntry* entryOf(const std::string& name)
{
    for (const StateEntry& entry : entries)
        if (entry.name == name)
            return &entry;
    return nullptr;
}

} // namespace

bool setState(const std::string& name, const std::wstring& value)
{
    const StateEntry* const entry = isRunning() ? entryOf(name) : nullptr;
    return entry && entry->set(value);
}

std::optional<std::wstring> knownState(const std::string& name)
{
    const StateEntry* const entry = isRunning() ? entryOf(name) : nullptr;
    if (!entry)
        return std::nullopt;
    return entry->get();
}

std::wstring state(const std::string& name)
{
    return knownState(name).value_or(std::wstring());
}

std::vector<std::string> stateNames()
{
    std::vector<std::string> names;
    for (const StateEntry& entry : entries)
        names.emplace_back(entry.name);
    return names;
}

bool putPart(const std::wstring& path)
{
    return isRunning() && openDocument(path);
}

} // namespace standin
