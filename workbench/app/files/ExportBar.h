#pragma once

#include "workbench/engine/Exporter.h"

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
    explicit ExportBar(std::shared_ptr<MltSession> session, QWidget* parent = nullptr);
    ~ExportBar() override;

    /** False while another export runs. */
    bool start(Projection projection, const ExportSettings& settings);

    bool isRunning() const { return exporter_.running(); }

    void cancel();

private:
    void finished(const ExportResult& result);

    QLabel* text_;
    QProgressBar* progress_;
    std::string path_;
    std::shared_ptr<ExportBar*> self_; ///< what threads know of it; holds null once it is gone
    Exporter exporter_;
};

} // namespace workbench
