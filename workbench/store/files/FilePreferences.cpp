#include "workbench/store/files/FilePreferences.h"

#include "workbench/store/files/AtomicFile.h"
#include "workbench/store/files/FileLock.h"
#include "workbench/store/files/UnfinishedFile.h"
#include "workbench/store/json/JsonText.h"

#include <cmath>
#include <limits>
#include <utility>

namespace workbench
{

using oribund::PreferenceValue;
using oribund::String;

namespace
{
constexpr std::size_t kLargestPreferences = 16u << 20;
constexpr std::chrono::seconds kPatienceForTurn{2};

std::optional<PreferenceValue> valueOf(const Json& json)
{
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_string())
        return String(std::string_view(json.get_ref<const std::string&>()));
    if (json.is_number_integer()) {
        const auto whole = json.get<std::int64_t>();
        const bool fits = whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max();
        if (fits && !(json.is_number_unsigned() && json.get<std::uint64_t>() > INT64_MAX))
            return static_cast<int>(whole);
    }
    if (json.is_number())
        return json.get<double>();
    return std::nullopt;
}

Json jsonOf(const PreferenceValue& value)
{
    return std::visit(
        [](const auto& v) -> Json {
            if constexpr (std::is_same_v<std::decay_t<decltype(v)>, String>)
                return std::string(v.view());
            else
                return v;
        },
        value);
}

/** Whether the value would be read as it was written: JSON has no word for an infinite number. */
bool canBeKept(const PreferenceValue& value)
{
    const double* const number = std::get_if<double>(&value);
    return !number || std::isfinite(*number);
}
} // namespace

/** The file's object, whole. */
struct FilePreferences::Entries {
    Json json = Json::object();
};

FilePreferences::FilePreferences(const std::filesystem::path& path)
    : path_(path)
    , entries_(load())
{
    if (!entries_)
        entries_ = std::make_unique<Entries>();
    removeUnfinished(path_.parent_path());
}

FilePreferences::~FilePreferences() = default;

std::string FilePreferences::takeProblem()
{
    return std::exchange(problem_, std::string());
}

std::unique_ptr<FilePreferences::Entries> FilePreferences::load()
{
    auto entries = std::make_unique<Entries>();
    std::error_code unknown;
    if (!std::filesystem::exists(path_, unknown) && !unknown)
        return entries;
    const FileContents file = readFile(path_, kLargestPreferences);
    if (!file.error.empty()) {
        problem_ = file.error + " The defaults are used.";
        return nullptr;
    }
    ParsedJson parsed = parseJson(file.bytes);
    if (!parsed.error.empty() || !parsed.value.is_object()) {
        setAside(parsed.error.empty() ? "it holds no list of settings" : parsed.error);
        return nullptr;
    }
    entries->json = std::move(parsed.value);
    return entries;
}

void FilePreferences::setAside(const std::string& reason)
{
    for (int n = 1; n < 1000; ++n) {
        const std::filesystem::path aside = path_.string() + ".broken-" + std::to_string(n);
        std::error_code failed;
        if (std::filesystem::exists(aside, failed))
            continue;
        std::filesystem::rename(path_, aside, failed);
        problem_ = "The settings in \"" + path_.string() + "\" cannot be read (" + reason + "). ";
        problem_ += failed ? "The defaults are used."
                           : "They were kept as \"" + aside.filename().string() + "\", and the defaults are used.";
        return;
    }
}

std::optional<PreferenceValue> FilePreferences::read(const String& key) const
{
    const auto entry = entries_->json.find(std::string(key.view()));
    return entry == entries_->json.end() ? std::nullopt : valueOf(*entry);
}

bool FilePreferences::write(const String& key, const PreferenceValue& value)
{
    if (!canBeKept(value))
        return false;
    if (read(key) == value)
        return true;
    // Whether there is a folder shows when the file is written.
    std::error_code ignored;
    std::filesystem::create_directories(path_.parent_path(), ignored);
    // Another running program may have written since, and may be about to: only this entry is ours to change. One that
    // hangs while it writes must not hang this one too.
    const Descriptor turn = waitForFolder(path_.parent_path(), kPatienceForTurn);
    std::unique_ptr<Entries> latest = load();
    if (!latest && std::filesystem::exists(path_, ignored))
        return false; // what cannot be read is not replaced
    if (!latest)
        latest = std::make_unique<Entries>(*entries_);
    latest->json[std::string(key.view())] = jsonOf(value);
    if (std::string failed = replaceFile(path_, readableText(latest->json)); !failed.empty()) {
        problem_ = std::move(failed);
        return false;
    }
    entries_ = std::move(latest);
    return true;
}

} // namespace workbench
