#include "workbench/monitor/CurveLook.h"

#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QVector>

#include <iterator>

namespace {

// No red among them: red is for danger.
constexpr QRgb lightColors[] = { 0xff1f5fd0, 0xff9a4d00, 0xff1d7a3e, 0xff7b3fb5, 0xff006d84, 0xffa8327e };
constexpr QRgb darkColors[] = { 0xff7aabff, 0xfff0b35a, 0xff6fd08c, 0xffc49bff, 0xff55cfe0, 0xfff09bd0 };

const QVector<QVector<qreal>>& actualDashes()
{
    static const QVector<QVector<qreal>> dashes{ {}, { 12, 3 }, { 12, 3, 2, 3 }, { 12, 3, 2, 3, 2, 3 } };
    return dashes;
}

const QVector<QVector<qreal>>& setDashes()
{
    static const QVector<QVector<qreal>> dashes{ { 4, 3 }, { 1, 3 }, { 4, 2, 1, 2 }, { 4, 2, 1, 2, 1, 2 } };
    return dashes;
}

} // namespace

namespace CurveLook {

bool isLight(const QPalette& palette)
{
    return palette.color(QPalette::Text).lightness() < palette.color(QPalette::Base).lightness();
}

QPen pen(int axisNo, CurveKind kind, bool light)
{
    const auto& colors = light ? lightColors : darkColors;
    QPen pen(QColor::fromRgb(colors[static_cast<std::size_t>(axisNo) % std::size(colors)]));
    pen.setCapStyle(Qt::FlatCap);
    const bool isSet = kind == SetPosition || kind == SetVelocity;
    const QVector<QVector<qreal>>& dashes = isSet ? setDashes() : actualDashes();
    const QVector<qreal>& pattern = dashes.at(axisNo % dashes.size());
    if (!pattern.isEmpty())
        pen.setDashPattern(pattern);
    return pen;
}

QIcon sample(const QPen& pen)
{
    QPixmap pixmap(32, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QPen thick(pen);
    thick.setWidth(2);
    painter.setPen(thick);
    painter.drawLine(1, 8, 31, 8);
    painter.end();
    return QIcon(pixmap);
}

} // namespace CurveLook
