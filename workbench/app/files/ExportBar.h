#pragma once

#include "workbench/app/files/ExportRun.h"

#include <QFrame>

#include <functional>
#include <memory>

class QLabel;
class QProgressBar;

namespace workbench
{

/** An export that is under way: how far it is, and a button that ends it. The rest of the window goes on working. */
class ExportBar final : public QFrame
{
public:
    explicit ExportBar(std::shared_ptr<EngineHost> engine, QWidget* parent = nullptr);
    ~ExportBar() override;

    /** As startExport(). False, and said why, when it cannot begin. */
    bool start(const EditModel& edit, const std::filesystem::path& project, const ExportRequest& request);

    bool isRunning() const { return exporter_.running(); }

    void cancel();

    /** What is to be done once, when the export that runs has succeeded; cancelling it takes that back. */
    void setAfterwards(const QString& description, std::function<void()> act);

private:
    void finished(const ExportResult& result, const std::filesystem::path& where);

    QLabel* text_;
    QProgressBar* progress_;
    std::function<void()> afterwards_;
    std::shared_ptr<ExportBar*> self_; ///< what threads know of it; holds null once it is gone
    Exporter exporter_;
};

} // namespace workbench
