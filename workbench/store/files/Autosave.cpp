#include "workbench/store/files/Autosave.h"

#include "workbench/store/files/BackgroundWriter.h"
#include "workbench/store/files/SessionLock.h"
#include "workbench/store/files/UnfinishedFile.h"

#include <algorithm>
#include <utility>

namespace workbench
{

namespace fs = std::filesystem;

Autosave::Autosave(const fs::path& folder, Clock::duration interval)
    : interval_(interval)
    , session_(SessionLock::create(folder, problem_))
{
    removeUnfinished(folder);
    if (session_)
        writer_ = std::make_unique<BackgroundWriter>(session_->copy());
}

Autosave::~Autosave()
{
    flush();
}

bool Autosave::setProject(const fs::path& project)
{
    return !session_ || session_->claimProject(project);
}

void Autosave::changed(Clock::time_point now)
{
    if (!dirty_)
        dirtySince_ = now;
    dirty_ = true;
}

bool Autosave::due(Clock::time_point now) const
{
    // A fifth of the interval is left for asking late, for making the copy and for writing it.
    return writer_ && dirty_ && now - dirtySince_ >= interval_ - interval_ / 5;
}

void Autosave::store(std::string contents)
{
    dirty_ = false;
    if (writer_)
        writer_->store(std::move(contents));
}

void Autosave::clean()
{
    dirty_ = false;
    if (writer_)
        writer_->remove();
}

void Autosave::close()
{
    clean();
    writer_.reset();
    if (session_)
        session_->removeFile();
    session_.reset();
}

void Autosave::flush()
{
    if (writer_)
        writer_->flush();
}

std::string Autosave::takeProblem()
{
    if (problem_.empty() && writer_) {
        problem_ = writer_->takeProblem();
        if (!problem_.empty()) {
            changed(Clock::now());
            problem_ = "The copy for recovery could not be made. " + problem_ + " Save the project soon.";
        }
    }
    return std::exchange(problem_, std::string());
}

fs::path Autosave::adopt(const Recoverable& found)
{
    const auto crashed = session_ ? SessionLock::take(SessionLock::sessionOf(found.file)) : nullptr;
    if (!crashed)
        return {};
    writer_->flush();
    // The name goes first: after it, the copy has an owner at every moment.
    session_->setProject(found.project);
    std::error_code failed;
    fs::rename(found.file, session_->copy(), failed);
    if (failed)
        return {};
    crashed->removeFile();
    return session_->copy();
}

std::vector<Recoverable> Autosave::findRecoverable(const fs::path& folder)
{
    std::vector<Recoverable> found;
    std::error_code unreadable;
    for (fs::directory_iterator file(folder, unreadable), end; !unreadable && file != end; file.increment(unreadable)) {
        if (!SessionLock::isSessionFile(file->path()))
            continue;
        const auto crashed = SessionLock::take(file->path());
        if (!crashed)
            continue;
        std::error_code none;
        const fs::file_time_type time = fs::last_write_time(crashed->copy(), none);
        if (none)
            crashed->removeFile();
        else
            found.push_back({crashed->copy(), crashed->project(), time});
    }
    std::sort(found.begin(), found.end(), [](const Recoverable& a, const Recoverable& b) { return a.time > b.time; });
    return found;
}

void Autosave::discard(const Recoverable& found)
{
    const auto crashed = SessionLock::take(SessionLock::sessionOf(found.file));
    if (!crashed)
        return;
    std::error_code ignored;
    fs::remove(found.file, ignored);
    crashed->removeFile();
}

} // namespace workbench
