#include "workbench/app/files/PatientReader.h"

#include "workbench/app/session/Say.h"
#include "workbench/app/session/Workspace.h"

#include <QEventLoop>
#include <QPointer>
#include <QProgressDialog>
#include <QTimer>

#include <memory>
#include <stop_token>
#include <utility>

namespace workbench
{

namespace
{

constexpr int kPatience = 300; // ms, before the user is told

} // namespace

std::optional<ProjectReading> PatientReader::read(const std::filesystem::path& file)
{
    if (std::exchange(isReading_, true))
        return std::nullopt;
    const auto result = std::make_shared<std::optional<ProjectReading>>(); // also for one that was given up
    std::stop_source stop;
    QEventLoop loop;
    background_.run([&catalogue = workspace_.catalogue(), file, result, token = stop.get_token(),
                     waiting = QPointer<QEventLoop>(&loop)]() -> Background::Completion {
        return [result, waiting, reading = readProject(file, catalogue, token)]() mutable {
            *result = std::move(reading);
            if (waiting)
                waiting->quit();
        };
    });
    QTimer::singleShot(kPatience, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!*result) {
        QProgressDialog question(QStringLiteral("Opening %1…").arg(QString::fromStdString(quotedFile(file.string()))),
                                 QStringLiteral("Cancel"), 0, 0, &window_);
        question.setWindowModality(Qt::WindowModal);
        QObject::connect(&question, &QProgressDialog::canceled, &loop, &QEventLoop::quit);
        question.show();
        loop.exec();
    }
    isReading_ = false;
    if (!*result)
        stop.request_stop();
    return std::exchange(*result, std::nullopt);
}

} // namespace workbench
