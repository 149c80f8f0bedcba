#include "resources/UnitFigures.h"

#include <QLineF>
#include <QPainterPath>
#include <QtMath>

namespace drawing {

namespace {

constexpr double letterSize = 34;
constexpr double badgeRadius = 21;
constexpr double shaftThickness = 14;

/// The two shafts that the gear joins.
enum class Shaft {
    Motor,
    Table,
};

QString letterOf(Shaft shaft)
{
    return shaft == Shaft::Motor ? QStringLiteral("M") : QStringLiteral("W");
}

/// Machine parts and signs that both figures are made of.
class UnitFigure {
public:
    explicit UnitFigure(Theme theme)
        : m_canvas(QSize(unitFigureWidth, unitFigureHeight), theme), m_colours(m_canvas.colours())
    {
    }

    Picture linear();
    Picture rotary();

private:
    void part(const QRectF& box, double rounding);
    void shaft(QPointF from, QPointF to);
    void motor(const QRectF& body, const QRectF& flange);
    void wheel(const QRectF& box, Qt::Orientation axis, int teeth);
    void badge(QPointF centre, int number);
    void badgeBeside(QPointF centre, QPointF wheelRim, int number);
    void letter(const QRectF& cell, const QString& text, const QColor& colour);
    QColor colourOf(Shaft shaft) const;
    void turnSign(QPointF centre, QPointF radii, double gapAt, Shaft shaft);
    double oneTurnOf(QPointF left, Shaft shaft);
    void equals(QPointF centre);
    void pulsesPerTurn(QPointF left);
    void screw(const QRectF& box);
    void slide(const QRectF& plate, double screwY);
    void distancePerTurn(const QRectF& plate, double distance, double y);
    void dial(QPointF centre, double radiusX, double radiusY, double tickShare);
    void anglePerTurn(QPointF left);
    void disc(QPointF top, double radiusX, double radiusY, double thickness);
    void ratio(QPointF middle);

    PictureCanvas m_canvas;
    const Palette& m_colours;
};

void UnitFigure::part(const QRectF& box, double rounding)
{
    m_canvas.painter().setPen(pen(m_colours.body, LineWeight::outline));
    m_canvas.painter().setBrush(m_colours.fill);
    m_canvas.painter().drawRoundedRect(box, rounding, rounding);
}

void UnitFigure::shaft(QPointF from, QPointF to)
{
    m_canvas.line(from, to, m_colours.body, shaftThickness);
    m_canvas.line(from, to, m_colours.fill, shaftThickness - 2 * LineWeight::outline);
}

void UnitFigure::motor(const QRectF& body, const QRectF& flange)
{
    part(body, 8);
    part(flange, 3);
    letter(body, letterOf(Shaft::Motor), m_colours.text);
}

void UnitFigure::wheel(const QRectF& box, Qt::Orientation axis, int teeth)
{
    part(box, 3);
    // Seen from the side the teeth crowd together towards the rims.
    const bool lying = axis == Qt::Horizontal;
    const double radius = (lying ? box.height() : box.width()) / 2;
    for (int tooth = 1; tooth < teeth; ++tooth) {
        const double offset = radius * qCos(M_PI * tooth / teeth);
        const QPointF centre = box.center() + (lying ? QPointF(0, offset) : QPointF(offset, 0));
        const QPointF half = lying ? QPointF(box.width() / 2, 0) : QPointF(0, box.height() / 2);
        m_canvas.line(centre - half, centre + half, m_colours.body, LineWeight::guide);
    }
}

void UnitFigure::badge(QPointF centre, int number)
{
    m_canvas.painter().setPen(Qt::NoPen);
    m_canvas.painter().setBrush(m_colours.speed);
    m_canvas.painter().drawEllipse(centre, badgeRadius, badgeRadius);
    const QRectF cell(centre.x() - badgeRadius, centre.y() - badgeRadius - 1, 2 * badgeRadius, 2 * badgeRadius);
    m_canvas.write(cell, Qt::AlignCenter, QString::number(number), font(28, true), m_colours.paper);
}

void UnitFigure::badgeBeside(QPointF centre, QPointF wheelRim, int number)
{
    m_canvas.line(centre, wheelRim, m_colours.speed, LineWeight::outline);
    badge(centre, number);
}

void UnitFigure::letter(const QRectF& cell, const QString& text, const QColor& colour)
{
    m_canvas.write(cell, Qt::AlignCenter, text, font(letterSize, true), colour);
}

QColor UnitFigure::colourOf(Shaft shaft) const
{
    return shaft == Shaft::Motor ? m_colours.speed : m_colours.position;
}

void UnitFigure::turnSign(QPointF centre, QPointF radii, double gapAt, Shaft shaft)
{
    constexpr double gap = 70;
    constexpr double weight = 3.5;
    // Wheels that mesh turn against each other.
    const double sense = shaft == Shaft::Motor ? -1 : 1;
    const double start = gapAt + sense * gap / 2;
    const double sweep = sense * (360 - gap);
    const QRectF box(centre - radii, centre + radii);
    QPainterPath whole;
    whole.arcMoveTo(box, start);
    whole.arcTo(box, start, sweep);
    const double head = arrowHeadLength(weight) / whole.length();
    // The line ends inside its head, and the head lies along the chord that it covers.
    QPainterPath visible;
    visible.arcMoveTo(box, start);
    visible.arcTo(box, start, sweep * (1 - head));
    m_canvas.painter().strokePath(visible, QPen(colourOf(shaft), weight, Qt::SolidLine, Qt::FlatCap));
    const QLineF chord(whole.pointAtPercent(1 - head), whole.pointAtPercent(1));
    drawArrowHead(m_canvas.painter(), chord.p2(), -chord.angle(), weight, colourOf(shaft));
}

double UnitFigure::oneTurnOf(QPointF left, Shaft shaft)
{
    turnSign(left + QPointF(22, 0), { 21, 21 }, 90, shaft);
    letter(QRectF(left.x() + 52, left.y() - 28, 44, 54), letterOf(shaft), m_colours.text);
    equals(left + QPointF(116, 0));
    return left.x() + 144;
}

void UnitFigure::equals(QPointF centre)
{
    for (double offset : { -5.0, 5.0 })
        m_canvas.line(centre + QPointF(-11, offset), centre + QPointF(11, offset), m_colours.text, LineWeight::level);
}

void UnitFigure::pulsesPerTurn(QPointF left)
{
    const double start = oneTurnOf(left, Shaft::Motor);
    constexpr double step = 12;
    QPainterPath pulses(QPointF(start, left.y() + 14));
    for (int pulse = 0; pulse < 4; ++pulse) {
        const double x = start + pulse * 2 * step;
        pulses.lineTo(x + step / 2, left.y() + 14);
        pulses.lineTo(x + step / 2, left.y() - 14);
        pulses.lineTo(x + 3 * step / 2, left.y() - 14);
        pulses.lineTo(x + 3 * step / 2, left.y() + 14);
    }
    pulses.lineTo(start + 8 * step, left.y() + 14);
    m_canvas.painter().strokePath(pulses, QPen(m_colours.signal, LineWeight::level, Qt::SolidLine, Qt::SquareCap));
}

void UnitFigure::screw(const QRectF& box)
{
    part(box, 0);
    m_canvas.painter().save();
    m_canvas.painter().setClipRect(box);
    for (double x = box.left() - 10; x < box.right(); x += 14)
        m_canvas.line({ x, box.bottom() }, { x + 10, box.top() }, m_colours.body, LineWeight::outline);
    m_canvas.painter().restore();
}

void UnitFigure::slide(const QRectF& plate, double screwY)
{
    const QRectF nut(plate.center().x() - 44, plate.bottom(), 88, screwY + 26 - plate.bottom());
    m_canvas.painter().setPen(pen(m_colours.position, LineWeight::outline));
    QColor surface = m_colours.position;
    surface.setAlphaF(0.18);
    for (const QRectF& box : { plate, nut }) {
        m_canvas.painter().setBrush(m_colours.paper);
        m_canvas.painter().drawRoundedRect(box, 4, 4);
        m_canvas.painter().setBrush(surface);
        m_canvas.painter().drawRoundedRect(box, 4, 4);
    }
    letter(plate, letterOf(Shaft::Table), m_colours.text);
}

void UnitFigure::distancePerTurn(const QRectF& plate, double distance, double y)
{
    // Where the table is after one turn, as a shadow of itself.
    m_canvas.painter().setBrush(Qt::NoBrush);
    m_canvas.painter().setPen(QPen(m_colours.position, LineWeight::outline, Qt::DashLine));
    m_canvas.painter().drawRoundedRect(plate.translated(distance, 0), 4, 4);
    for (double x : { plate.right(), plate.right() + distance })
        m_canvas.line({ x, plate.bottom() }, { x, y + 16 }, m_colours.position, LineWeight::guide, Qt::DashLine);
    m_canvas.arrow({ plate.right(), y }, { plate.right() + distance, y }, m_colours.position, LineWeight::level, true);
    oneTurnOf({ plate.right() - 148, y }, Shaft::Table);
}

void UnitFigure::dial(QPointF centre, double radiusX, double radiusY, double tickShare)
{
    for (int tick = 0; tick < 24; ++tick) {
        const double angle = M_PI * tick / 12;
        const QPointF rim(radiusX * qCos(angle), radiusY * qSin(angle));
        const double share = tick % 6 == 0 ? 2 * tickShare : tickShare;
        m_canvas.line(centre + rim, centre + (1 - share) * rim, m_colours.position, LineWeight::outline);
    }
}

void UnitFigure::anglePerTurn(QPointF left)
{
    const double start = oneTurnOf(left, Shaft::Table);
    const QPointF centre(start + 30, left.y());
    m_canvas.painter().setBrush(Qt::NoBrush);
    m_canvas.painter().setPen(pen(m_colours.position, LineWeight::outline));
    m_canvas.painter().drawEllipse(centre, 30, 30);
    dial(centre, 30, 30, 0.22);
}

void UnitFigure::disc(QPointF top, double radiusX, double radiusY, double thickness)
{
    const QRectF upper(top.x() - radiusX, top.y() - radiusY, 2 * radiusX, 2 * radiusY);
    QPainterPath rim(QPointF(upper.left(), top.y()));
    rim.lineTo(upper.left(), top.y() + thickness);
    rim.arcTo(upper.translated(0, thickness), 180, 180);
    rim.lineTo(upper.right(), top.y());
    QColor surface = m_colours.position;
    surface.setAlphaF(0.18);
    m_canvas.painter().setPen(pen(m_colours.position, LineWeight::outline));
    m_canvas.painter().setBrush(m_colours.fill);
    m_canvas.painter().drawPath(rim);
    m_canvas.painter().setBrush(m_colours.paper);
    m_canvas.painter().drawEllipse(upper);
    m_canvas.painter().setBrush(surface);
    m_canvas.painter().drawEllipse(upper);
}

void UnitFigure::ratio(QPointF middle)
{
    const auto half = [this](QPointF bar, double above) {
        m_canvas.line(bar - QPointF(52, 0), bar + QPointF(52, 0), m_colours.text, LineWeight::level);
        return bar + QPointF(0, above);
    };
    const QPointF turns = middle - QPointF(76, 0);
    const QPointF wheels = middle + QPointF(76, 0);
    const QPointF motorTurns = half(turns, -32);
    const QPointF tableTurns = half(turns, 32);
    turnSign(motorTurns - QPointF(26, 0), { 18, 18 }, 90, Shaft::Motor);
    turnSign(tableTurns - QPointF(26, 0), { 18, 18 }, 90, Shaft::Table);
    letter(QRectF(motorTurns.x() + 4, motorTurns.y() - 27, 48, 54), letterOf(Shaft::Motor), m_colours.text);
    letter(QRectF(tableTurns.x() + 4, tableTurns.y() - 27, 48, 54), letterOf(Shaft::Table), m_colours.text);
    equals(middle);
    badge(half(wheels, -30), tableWheelNumber);
    badge(half(wheels, 30), motorWheelNumber);
}

Picture UnitFigure::linear()
{
    constexpr double motorY = 128;
    constexpr double screwY = 250;
    const QRectF table(460, screwY - 66, 200, 50);
    shaft({ 200, motorY }, { 346, motorY });
    motor(QRectF(40, motorY - 62, 150, 124), QRectF(190, motorY - 36, 16, 72));
    turnSign({ 246, motorY }, { 14, 38 }, 0, Shaft::Motor);
    shaft({ 250, screwY }, { 920, screwY });
    wheel(QRectF(286, motorY - 46, 48, 92), Qt::Horizontal, 10);
    wheel(QRectF(286, screwY - 76, 48, 152), Qt::Horizontal, 16);
    screw(QRectF(424, screwY - 15, 448, 30));
    part(QRectF(402, screwY - 34, 22, 68), 3);
    part(QRectF(872, screwY - 34, 22, 68), 3);
    turnSign({ 368, screwY }, { 14, 38 }, 0, Shaft::Table);
    distancePerTurn(table, 110, 350);
    slide(table, screwY);
    badgeBeside({ 384, 70 }, { 334, motorY - 24 }, motorWheelNumber);
    badgeBeside({ 384, 352 }, { 334, screwY + 52 }, tableWheelNumber);
    pulsesPerTurn({ 40, 352 });
    ratio({ 750, 84 });
    return m_canvas.finish();
}

Picture UnitFigure::rotary()
{
    constexpr double wheelTop = 200;
    constexpr double motorX = 362;
    constexpr double tableX = 492;
    const QPointF tableTop(tableX, 84);
    shaft({ motorX, wheelTop - 14 }, { motorX, 300 });
    motor(QRectF(motorX - 62, 300, 124, 96), QRectF(motorX - 36, 284, 72, 16));
    turnSign({ motorX, 264 }, { 36, 12 }, 90, Shaft::Motor);
    shaft({ tableX, 120 }, { tableX, 310 });
    part(QRectF(tableX - 26, 300, 52, 20), 3);
    turnSign({ tableX, 270 }, { 36, 12 }, 90, Shaft::Table);
    wheel(QRectF(motorX - 48, wheelTop, 96, 42), Qt::Vertical, 10);
    wheel(QRectF(tableX - 82, wheelTop, 164, 42), Qt::Vertical, 16);
    disc(tableTop, 176, 48, 32);
    dial(tableTop, 176, 48, 0.07);
    letter(QRectF(tableX - 30, 58, 60, 50), letterOf(Shaft::Table), m_colours.text);
    badgeBeside({ 252, wheelTop + 21 }, { motorX - 48, wheelTop + 21 }, motorWheelNumber);
    badgeBeside({ 636, wheelTop + 21 }, { tableX + 82, wheelTop + 21 }, tableWheelNumber);
    pulsesPerTurn({ 30, 352 });
    anglePerTurn({ 706, 352 });
    ratio({ 816, 100 });
    return m_canvas.finish();
}

} // namespace

Picture drawLinearUnitFigure(Theme theme)
{
    return UnitFigure(theme).linear();
}

Picture drawRotaryUnitFigure(Theme theme)
{
    return UnitFigure(theme).rotary();
}

} // namespace drawing
