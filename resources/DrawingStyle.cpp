#include "resources/DrawingStyle.h"

#include <QPainter>
#include <QPolygonF>

namespace drawing {

const Palette& palette(Theme theme)
{
    static const Palette light{ QColor(255, 255, 255), QColor(205, 211, 220), QColor(33, 38, 46), QColor(92, 101, 114),
        QColor(84, 94, 108), QColor(229, 233, 239), QColor(40, 104, 214), QColor(176, 96, 0), QColor(18, 128, 92),
        QColor(214, 40, 40) };
    static const Palette dark{ QColor(37, 40, 46), QColor(72, 78, 89), QColor(231, 235, 241), QColor(166, 174, 187),
        QColor(160, 169, 183), QColor(62, 68, 78), QColor(112, 166, 255), QColor(255, 178, 82), QColor(74, 204, 156),
        QColor(255, 106, 106) };
    return theme == Theme::Light ? light : dark;
}

QPen pen(const QColor& colour, double weight, Qt::PenStyle style)
{
    return QPen(colour, weight, style, Qt::RoundCap, Qt::RoundJoin);
}

QFont font(double pixelSize, bool bold)
{
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(qRound(pixelSize));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return font;
}

void fillPolygon(QPainter& painter, const QVector<QPointF>& corners, const QColor& colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF(corners));
}

double arrowHeadLength(double lineWeight)
{
    return 9 + 1.6 * lineWeight;
}

void drawArrowHead(QPainter& painter, QPointF tip, double degrees, double lineWeight, const QColor& colour)
{
    const double length = arrowHeadLength(lineWeight);
    const double half = 0.55 * length;
    painter.save();
    painter.translate(tip);
    painter.rotate(degrees);
    fillPolygon(painter, { { 0, 0 }, { -length, -half }, { -0.8 * length, 0 }, { -length, half } }, colour);
    painter.restore();
}

} // namespace drawing
