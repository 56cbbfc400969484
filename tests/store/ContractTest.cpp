#include "tests/store/TemporaryFolder.h"
#include "tests/support/contracts/PreferencesContract.h"

#include "workbench/store/files/FilePreferences.h"

namespace
{

/** Preferences on disk, opened anew at each use, so that what counts is what the file holds. */
class FilePreferencesMaker
{
public:
    oribund::EditorPreferences& preferences()
    {
        open_ = std::make_unique<workbench::FilePreferences>(folder_.path() / "preferences.json");
        return *open_;
    }

private:
    ::test::TemporaryFolder folder_;
    std::unique_ptr<workbench::FilePreferences> open_;
};

} // namespace

namespace oribund::test
{
INSTANTIATE_TYPED_TEST_SUITE_P(File, PreferencesContract, FilePreferencesMaker);
} // namespace oribund::test
