#include "workbench/app/start/SampleMedia.h"

#include <QDir>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

#include <cmath>

namespace workbench
{

namespace
{

void paintLandscape(QPainter& painter, const QRectF& area)
{
    QLinearGradient sky(area.topLeft(), area.bottomLeft());
    sky.setColorAt(0.0, QColor(38, 74, 128));
    sky.setColorAt(0.6, QColor(232, 170, 110));
    sky.setColorAt(1.0, QColor(250, 220, 170));
    painter.fillRect(area, sky);
    QRadialGradient sun(area.width() * 0.68, area.height() * 0.52, area.height() * 0.2);
    sun.setColorAt(0.0, QColor(255, 250, 225));
    sun.setColorAt(0.35, QColor(255, 226, 150));
    sun.setColorAt(1.0, QColor(255, 210, 140, 0));
    painter.fillRect(area, sun);
    const QColor hills[] = {QColor(96, 84, 110), QColor(62, 82, 74), QColor(34, 56, 44)};
    for (int i = 0; i < 3; ++i) {
        QPolygonF hill;
        hill << area.bottomLeft();
        for (int x = 0; x <= 64; ++x) {
            const double t = x / 64.0;
            const double wave = 0.05 * std::sin(t * (7.0 + 3.0 * i) + i * 1.7) + 0.02 * std::sin(t * 23.0 + i);
            hill << QPointF(area.width() * t, area.height() * (0.62 + 0.12 * i + wave));
        }
        hill << area.bottomRight();
        painter.setBrush(hills[i]);
        painter.drawPolygon(hill);
    }
}

void paintChart(QPainter& painter, const QRectF& area)
{
    const QColor colours[] = {Qt::white,
                              QColor(220, 200, 40),
                              QColor(40, 190, 200),
                              QColor(50, 180, 70),
                              QColor(190, 60, 180),
                              QColor(200, 50, 45),
                              QColor(50, 70, 190),
                              Qt::black};
    const double width = area.width() / 8.0;
    for (int i = 0; i < 8; ++i) {
        painter.fillRect(QRectF(area.left() + i * width, area.top(), width, area.height() / 2), colours[i]);
        const int grey = i * 255 / 7;
        painter.fillRect(QRectF(area.left() + i * width, area.center().y(), width, area.height() / 2),
                         QColor(grey, grey, grey));
    }
}

} // namespace

std::vector<std::string> mediaIn(const std::string& folder)
{
    std::vector<std::string> found;
    if (folder.empty())
        return found;
    const QDir dir(QString::fromStdString(folder));
    const QStringList films{QStringLiteral("*.mp4"), QStringLiteral("*.mov"), QStringLiteral("*.mkv"),
                            QStringLiteral("*.webm"), QStringLiteral("*.avi")};
    for (const QString& name : dir.entryList(films, QDir::Files | QDir::Readable, QDir::Name))
        found.push_back(dir.absoluteFilePath(name).toStdString());
    return found;
}

std::string paintTestCard(const std::string& folder)
{
    QImage card(1280, 720, QImage::Format_RGB32);
    QPainter painter(&card);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    paintLandscape(painter, card.rect());
    paintChart(painter, QRectF(40, 40, 420, 90));
    painter.end();
    const QString path = QString::fromStdString(folder) + QStringLiteral("/Test card.png");
    return card.save(path) ? path.toStdString() : std::string();
}

} // namespace workbench
