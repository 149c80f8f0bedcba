#include "resources/SmallImages.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace drawing {

namespace {

QImage blank()
{
    QImage image(smallImageSide, smallImageSide, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

QPolygonF octagon(QPointF centre, double radius)
{
    QPolygonF corners;
    for (int i = 0; i < 8; ++i) {
        const double angle = qDegreesToRadians(22.5 + 45.0 * i);
        corners << centre + radius * QPointF(qCos(angle), qSin(angle));
    }
    return corners;
}

} // namespace

QImage axisConfigIcon(Theme theme)
{
    const Palette& colours = palette(theme);
    QImage image = blank();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(2, 22, 28, 4), colours.body);
    painter.fillRect(QRectF(2, 14, 4, 14), colours.body);
    painter.fillRect(QRectF(26, 14, 4, 14), colours.body);
    painter.fillRect(QRectF(10, 12, 12, 8), colours.position);
    painter.fillRect(QRectF(12, 4, 8, 2), colours.position);
    fillPolygon(painter, { { 6, 5 }, { 12, 0 }, { 12, 10 } }, colours.position);
    fillPolygon(painter, { { 26, 5 }, { 20, 0 }, { 20, 10 } }, colours.position);
    return image;
}

QImage axisIcon(Theme theme)
{
    const Palette& colours = palette(theme);
    QImage image = blank();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(2, 16, 22, 4), colours.body);
    painter.fillRect(QRectF(4, 12, 2, 12), colours.body);
    painter.fillRect(QRectF(18, 12, 2, 12), colours.body);
    fillPolygon(painter, { { 31, 18 }, { 22, 11 }, { 22, 25 } }, colours.body);
    painter.setBrush(colours.position);
    painter.drawEllipse(QPointF(12, 18), 6, 6);
    return image;
}

QImage statusOnLamp()
{
    const Palette& colours = palette(Theme::Light);
    QImage image = blank();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen(colours.paper, 2));
    painter.setBrush(colours.signal);
    painter.drawEllipse(QPointF(16, 16), 14, 14);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.paper);
    painter.drawEllipse(QPointF(16, 16), 6, 6);
    return image;
}

QImage statusOffLamp()
{
    const Palette& colours = palette(Theme::Light);
    QImage image = blank();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen(colours.paper, 2));
    painter.setBrush(colours.fault);
    painter.drawPolygon(octagon({ 16, 16 }, 15));
    painter.setPen(Qt::NoPen);
    painter.fillRect(QRectF(8, 14, 16, 4), colours.paper);
    return image;
}

} // namespace drawing
