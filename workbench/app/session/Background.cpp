#include "workbench/app/session/Background.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <utility>

namespace workbench
{

struct Background::State {
    int pending = 0; // user interface's thread only
};

Background::Background()
    : state_(std::make_shared<State>())
{
}

Background::~Background() = default;

void Background::run(Work work)
{
    ++state_->pending;
    QThreadPool::globalInstance()->start([work = std::move(work), weak = std::weak_ptr<State>(state_)] {
        Completion completion = work();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [completion = std::move(completion), weak] {
                const std::shared_ptr<State> state = weak.lock();
                if (!state)
                    return;
                --state->pending;
                if (completion)
                    completion();
            },
            Qt::QueuedConnection);
    });
}

int Background::pending() const
{
    return state_->pending;
}

bool Background::finishAll(int milliseconds)
{
    return QThreadPool::globalInstance()->waitForDone(milliseconds);
}

} // namespace workbench
