#pragma once

#include "oribund/host/services/EditorPreferences.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace workbench
{

/**
 * The user's choices in a JSON file that a person can read and change: one object, from key to value.
 *
 * Each choice is written at once, and replaces the file whole. A file that is not readable as JSON is set aside beside
 * its place, as NAME.broken-N, and everything starts from its default. Entries that mean nothing to this program, and
 * those that another running program adds, stay in the file; of two programs, one writes at a time.
 */
class FilePreferences : public oribund::EditorPreferences
{
public:
    /** A missing file is an empty one. Its folder is made when first needed. */
    explicit FilePreferences(const std::filesystem::path& path);
    ~FilePreferences() override;

    /** What went wrong in reading or writing since the last call, for a person to read; empty when nothing did. */
    std::string takeProblem();

private:
    struct Entries;

    std::optional<oribund::PreferenceValue> read(const oribund::String& key) const override;
    bool write(const oribund::String& key, const oribund::PreferenceValue& value) override;
    std::unique_ptr<Entries> load();
    void setAside(const std::string& reason);

    std::filesystem::path path_;
    std::string problem_; // first: reading may fill it
    std::unique_ptr<Entries> entries_;
};

} // namespace workbench
