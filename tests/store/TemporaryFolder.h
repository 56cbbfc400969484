#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace test
{

namespace fs = std::filesystem;

/** An empty folder that is gone with the object. */
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = (fs::temp_directory_path() / "oribund-store-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }

    ~TemporaryFolder()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    fs::path operator/(const std::string& name) const { return path_ / name; }

    const fs::path& path() const { return path_; }

    std::size_t count() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(path_), fs::directory_iterator()));
    }

private:
    fs::path path_;
};

inline void spill(const fs::path& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string slurp(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace test
