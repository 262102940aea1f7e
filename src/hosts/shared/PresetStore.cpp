#include "hosts/shared/PresetStore.h"

#include "platform/files/Utf8.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace qor::host {

namespace {

namespace fs = std::filesystem;

constexpr const char* kFactoryFolder = "QOR Limiter Folder/Library/Factory Presets/";
constexpr const char* kExtension = ".plist";
constexpr std::size_t kLongestName =
    100; // bytes; with extension and temporary mark below a file name's limit

NSError storeError(std::string description) {
    return {NSCocoaErrorDomain,
            NSPropertyListReadCorruptError,
            {{NSLocalizedDescriptionKey, std::move(description)}}};
}

std::string lowered(std::string_view source) {
    std::string result(source);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

/// The presets in a directory, by name. The factory list's own rule for extensions: any case is listed, but
/// only ".plist" is found again; here what can't be found isn't listed.
std::vector<PresetEntry> presetsIn(const URL& directory, bool isFactory) {
    std::vector<PresetEntry> entries;
    const auto names = FileManager::defaultManager().contentsOfDirectoryAtPath(directory.path());
    if (!names) {
        return entries; // no directory, no presets
    }
    for (const std::string& name : names.value()) {
        const URL file = directory.appendingPathComponent(name);
        std::error_code code;
        if (file.pathExtension() == "plist" && !name.starts_with('.') &&
            fs::is_regular_file(file.path(), code)) {
            entries.push_back({file.deletingPathExtension().lastPathComponent(), isFactory, file});
        }
    }
    std::sort(entries.begin(), entries.end(), [](const PresetEntry& a, const PresetEntry& b) {
        return std::pair(lowered(a.name), a.name) < std::pair(lowered(b.name), b.name);
    });
    return entries;
}

std::vector<PresetEntry> userPresets() {
    const auto directory = userPresetDirectory();
    return directory ? presetsIn(*directory, false) : std::vector<PresetEntry>{};
}

std::vector<PresetEntry> factoryPresets() {
    const auto resources = Bundle::main().resourceURL();
    return resources ? presetsIn(resources->appendingPathComponent(kFactoryFolder), true)
                     : std::vector<PresetEntry>{};
}

/// What speaks against a preset's name, or nothing.
std::optional<std::string> findNameFault(const std::string& name) {
    if (name.find_first_not_of(' ') == std::string::npos) {
        return "it is empty";
    }
    if (name.size() > kLongestName) {
        return "it is longer than " + std::to_string(kLongestName) + " bytes";
    }
    if (name.front() == ' ' || name.back() == ' ' || name.front() == '.') {
        return "it begins with a point or a blank, or ends with a blank";
    }
    if (name.find_first_of("/\t\r\n\x7F") != std::string::npos || !isXmlText(name)) {
        return "it holds a slash, a control character or bytes that are no UTF-8";
    }
    return std::nullopt;
}

} // namespace

std::optional<URL> userPresetDirectory() {
    const auto data = dataDirectory();
    return data ? std::optional(
                      URL::fileURLWithPath(*data + "/" + Bundle::main().directoryName() + "/presets/"))
                : std::nullopt;
}

std::vector<PresetEntry> listPresets() {
    std::vector<PresetEntry> entries = factoryPresets();
    std::vector<PresetEntry> own = userPresets();
    entries.insert(entries.end(), std::make_move_iterator(own.begin()), std::make_move_iterator(own.end()));
    return entries;
}

Result<PresetEntry> findPreset(std::string_view nameOrFile) {
    if (nameOrFile.find('/') != std::string_view::npos || lowered(nameOrFile).ends_with(kExtension)) {
        const URL file = URL::fileURLWithPath(std::string(nameOrFile));
        return PresetEntry{file.deletingPathExtension().lastPathComponent(), false, file};
    }
    std::vector<PresetEntry> entries = userPresets();
    for (PresetEntry& entry : factoryPresets()) {
        entries.push_back(std::move(entry));
    }
    const auto matches = [&](const auto& same) { return std::find_if(entries.begin(), entries.end(), same); };
    auto found = matches([&](const PresetEntry& entry) { return entry.name == nameOrFile; });
    if (found == entries.end()) {
        found = matches([&](const PresetEntry& entry) { return lowered(entry.name) == lowered(nameOrFile); });
    }
    if (found != entries.end()) {
        return *found;
    }
    std::string near;
    for (const PresetEntry& entry : entries) {
        if (!nameOrFile.empty() && lowered(entry.name).find(lowered(nameOrFile)) != std::string::npos) {
            near += (near.empty() ? " Did you mean '" : "', '") + entry.name;
        }
    }
    return storeError("There is no preset '" + std::string(nameOrFile) + "'." + near +
                      (near.empty() ? "" : "'?") +
                      " 'qor-limiter presets' lists all; a file is named by its path or with \".plist\".");
}

Result<CheckedState> readPresetFile(const URL& file, Completeness completeness) {
    const std::string quoted = "'" + file.path() + "'";
    std::error_code code;
    const fs::file_status status = fs::status(file.path(), code);
    if (!fs::exists(status)) {
        return storeError("The preset file " + quoted +
                          " does not exist. Check the path, or list the presets.");
    }
    if (!fs::is_regular_file(status)) {
        return storeError(quoted + " is not a file. Name a preset file.");
    }
    const auto size = fs::file_size(file.path(), code);
    if (!code && size > kStateLimits.bytes) {
        return storeError("The preset file " + quoted + " is " + std::to_string(size) +
                          " bytes long; the limit is " + std::to_string(kStateLimits.bytes) +
                          ". It can't be a preset.");
    }
    const auto bytes = FileManager::defaultManager().contentsAtPath(file.path());
    if (!bytes) {
        return storeError("The preset file " + quoted + " can't be read. Check its permissions.");
    }
    auto state = checkState(*bytes, completeness);
    if (!state) {
        return storeError("The preset file " + quoted + " is refused. " +
                          state.error().localizedDescription() +
                          " Correct the place or save the preset again.");
    }
    return state;
}

Result<CheckedState> readPreset(const PresetEntry& entry, Completeness completeness) {
    return readPresetFile(entry.file, completeness);
}

Result<void> loadPreset(UnitHost& host, const PresetEntry& entry) {
    const auto state = readPreset(entry);
    if (!state) {
        return state.error();
    }
    applyState(host, state.value());
    return {};
}

Result<PresetEntry> savePreset(const std::string& name, const ParameterValues& values) {
    if (const auto fault = findNameFault(name)) {
        return storeError("'" + name + "' can't be a preset's name: " + *fault + ". Choose another name.");
    }
    const auto directory = userPresetDirectory();
    if (!directory) {
        return storeError("There is no home directory for presets. Set HOME or XDG_DATA_HOME.");
    }
    const auto bytes = stateBytes(values, name);
    if (!bytes) {
        return bytes.error();
    }
    PresetEntry entry{name, false, directory->appendingPathComponent(name + kExtension)};
    Result<void> done = FileManager::defaultManager().createDirectoryAtURL(*directory, true);
    if (done) {
        done = writeAtomically(bytes.value(), entry.file);
    }
    if (!done) {
        return storeError(done.error().localizedDescription() +
                          ". Check that you may write there and that the disk has room.");
    }
    return entry;
}

Result<PresetEntry> findUserPreset(std::string_view name) {
    const auto called = [name](const PresetEntry& entry) { return entry.name == name; };
    const std::vector<PresetEntry> own = userPresets();
    if (const auto found = std::find_if(own.begin(), own.end(), called); found != own.end()) {
        return *found;
    }
    const std::vector<PresetEntry> factory = factoryPresets();
    if (std::any_of(factory.begin(), factory.end(), called)) {
        return storeError("'" + std::string(name) + "' is a factory preset and stays.");
    }
    return storeError("You have no preset '" + std::string(name) +
                      "' of your own. 'qor-limiter presets' lists them; large and small letters count.");
}

Result<void> deletePreset(const PresetEntry& entry) {
    const fs::path file = entry.file.path();
    const auto directory = userPresetDirectory();
    if (entry.isFactory || !directory || file.parent_path() != directory->path()) {
        return storeError("'" + entry.name + "' is no preset of your own and stays.");
    }
    std::error_code code;
    if (!fs::remove(file, code)) {
        return storeError(
            "The preset file '" + file.string() + "' can't be deleted: " +
            (code ? code.message() + ". Check that you may write there." : "it does not exist any more."));
    }
    return {};
}

} // namespace qor::host
