#include "resources/HomingPicture.h"

#include "resources/HomingGeometry.h"
#include "resources/HomingWords.h"

#include <QPainterPath>
#include <QStringList>

namespace drawing {

namespace {

using homing::Direction;
using homing::HomeRange;
using homing::LimitAction;
using homing::Method;
using homing::Move;
using homing::Signal;
using homing::Speed;
using homing::Start;
using homing::StartingCase;

// The rows of a picture, in pixels from above, and its two columns.
constexpr double labelLeft = 28;
constexpr double labelWidth = 250;
constexpr double travelLeft = 316;
constexpr double travelRight = 1232;
constexpr double headerTop = 20;
constexpr double headerHeight = 44;
constexpr double railY = 146;
constexpr double camTop = 110;
constexpr double limitHeight = 30;
constexpr double signalTop = 198;
constexpr double signalHeight = 46;
constexpr double lanesTop = 300;
constexpr double lanesBottom = 580;
constexpr double limitsTop = 586;
constexpr double legendTop = 636;
constexpr double legendRow = 36;
constexpr double legStep = 26;
constexpr double faultWay = 62;

constexpr double textSize = 22;
constexpr double commentSize = 20;
constexpr double smallTextSize = 17;

double pixel(double place)
{
    return travelLeft + place * (travelRight - travelLeft);
}

double sign(Direction direction)
{
    return direction == Direction::Left ? -1 : 1;
}

QColor tint(QColor colour, double alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

/// A straight part of a path on its row.
struct Leg {
    double from;
    double to;
    double edge;
    double y;
    Speed speed;
};

/// How often the axis turns round on the path.
double turnsOf(const StartingCase& start)
{
    return start.moves.empty() ? 0 : double(start.moves.size()) - 1;
}

/// Where the leg's arrow head points to: half way to the edge, or just before it where the way is short.
double arrowTip(const Leg& leg, double headLength)
{
    const double ahead = leg.to > leg.from ? 1 : -1;
    const double way = (leg.edge - leg.from) * ahead;
    if (leg.speed == Speed::Close || way < 3 * headLength)
        return leg.edge - ahead * 8;
    return leg.from + ahead * (way + headLength) / 2;
}

class HomingPicture {
public:
    HomingPicture(const Method& method, Theme theme, Language language)
        : m_method(method), m_language(language), m_canvas(QSize(homingPictureWidth, homingPictureHeight), theme),
          m_colours(m_canvas.colours())
    {
    }

    Picture draw()
    {
        drawGuides();
        drawHeader();
        drawTravel();
        drawSignals();
        drawLanes();
        drawLimits();
        drawLegend();
        return m_canvas.finish();
    }

private:
    void drawHeader();
    void drawGuides();
    void drawGuide(double place);
    void drawTravel();
    void drawRail();
    void drawEnd(double x, double outwards, const QString& sign);
    void drawLimitSwitch(Signal limit, LimitAction action);
    void drawHomeSwitch();
    void drawEdgeLetter(double place, const QString& letter);
    void drawSignals();
    void drawLevel(Signal signal, double top);
    void drawLanes();
    void drawLane(const StartingCase& start, double top, double height);
    void drawLaneWords(const QStringList& words, double top, double height);
    void drawFaultLane(double top, double height);
    void drawStart(const StartingCase& start, double y);
    void drawStartDot(QPointF centre);
    void drawLegs(const std::vector<Leg>& legs);
    void drawTurn(const Leg& leg, const Leg& next);
    void drawEdgeSeen(QPointF centre);
    void drawLimits();
    void drawLimit(Signal limit, LimitAction action, bool atRight);
    void drawLimitSign(QPointF centre, LimitAction action);
    void drawLegend();
    double explain(double x, double y, double signWidth, const QString& words);

    std::vector<Leg> legsOf(const StartingCase& start, double firstY) const;
    std::vector<Signal> levelRows() const;
    double widthOf(const QString& words, double size) const;

    const Method& m_method;
    Language m_language;
    PictureCanvas m_canvas;
    const Palette& m_colours;
};

double HomingPicture::widthOf(const QString& words, double size) const
{
    return QFontMetricsF(font(size)).horizontalAdvance(words) + 4;
}

void HomingPicture::drawHeader()
{
    const QRectF row(labelLeft, headerTop, travelRight - labelLeft, headerHeight);
    const QString title = methodTitle(m_method, m_language);
    const double titleWidth = QFontMetricsF(font(32, true)).horizontalAdvance(title) + 4;
    m_canvas.write(QRectF(row.left(), row.top(), titleWidth, row.height()), Qt::AlignVCenter, title, font(32, true),
        m_colours.text);
    const QString needed = neededSignals(m_method, m_language);
    const double neededWidth = widthOf(needed, textSize);
    m_canvas.write(QRectF(row.right() - neededWidth, row.top(), neededWidth, row.height()),
        Qt::AlignVCenter | Qt::AlignRight, needed, font(textSize), m_colours.signal);
    const double ruleLeft = row.left() + titleWidth + 20;
    m_canvas.write(QRectF(ruleLeft, row.top(), row.right() - neededWidth - 20 - ruleLeft, row.height()),
        Qt::AlignVCenter, homeRule(m_method, m_language), font(24), m_colours.position);
}

void HomingPicture::drawGuides()
{
    for (Signal signal : levelRows())
        if (signal != Signal::IndexPulse)
            for (const Stretch& stretch : activeStretches(m_method, signal)) {
                drawGuide(stretch.first);
                drawGuide(stretch.second);
            }
    const double home = pixel(homeOf(m_method));
    m_canvas.line({ home, camTop }, { home, lanesBottom }, m_colours.position, LineWeight::outline, Qt::DashLine);
}

void HomingPicture::drawGuide(double place)
{
    const bool end = place <= 0 || place >= 1;
    if (end || qFuzzyCompare(place, homeOf(m_method)))
        return;
    m_canvas.line(
        { pixel(place), railY }, { pixel(place), lanesBottom }, m_colours.frame, LineWeight::guide, Qt::DashLine);
}

void HomingPicture::drawTravel()
{
    drawRail();
    drawLimitSwitch(Signal::NegativeLimit, m_method.negativeLimit);
    drawLimitSwitch(Signal::PositiveLimit, m_method.positiveLimit);
    if (m_method.range != HomeRange::None)
        drawHomeSwitch();
    m_canvas.placeMark({ pixel(homeOf(m_method)), railY }, 13);
}

void HomingPicture::drawRail()
{
    m_canvas.line({ travelLeft, railY }, { travelRight, railY }, m_colours.body, 6);
    drawEnd(travelLeft, -1, QStringLiteral("−"));
    drawEnd(travelRight, 1, QStringLiteral("+"));
}

void HomingPicture::drawEnd(double x, double outwards, const QString& sign)
{
    m_canvas.line({ x, railY - 24 }, { x, railY + 24 }, m_colours.body, 6);
    for (double y = railY - 22; y < railY + 22; y += 10)
        m_canvas.line({ x, y + 8 }, { x + outwards * 9, y }, m_colours.body, LineWeight::guide);
    const double left = outwards < 0 ? x - 38 : x + 10;
    m_canvas.write(QRectF(left, railY - 20, 28, 40), Qt::AlignCenter, sign, font(26, true), m_colours.faint);
}

void HomingPicture::drawLimitSwitch(Signal limit, LimitAction action)
{
    const Stretch stretch = activeStretches(m_method, limit).front();
    const QRectF box(pixel(stretch.first) + (limit == Signal::NegativeLimit ? 5 : 0), railY + 7,
        pixel(stretch.second) - pixel(stretch.first) - 5, limitHeight);
    const QColor colour = action == LimitAction::Fault ? m_colours.fault
        : action == LimitAction::NoMotion              ? m_colours.body
                                                       : m_colours.signal;
    m_canvas.painter().setPen(pen(colour, LineWeight::outline));
    m_canvas.painter().setBrush(tint(colour, 0.16));
    m_canvas.painter().drawRoundedRect(box, 4, 4);
    m_canvas.write(box, Qt::AlignCenter, signalLetter(limit), font(textSize, true), colour);
}

void HomingPicture::drawHomeSwitch()
{
    const Stretch stretch = activeStretches(m_method, Signal::HomeSwitch).front();
    const QRectF box(QPointF(pixel(stretch.first), camTop), QPointF(pixel(stretch.second), railY - 6));
    m_canvas.painter().setPen(pen(m_colours.signal, LineWeight::outline));
    m_canvas.painter().setBrush(tint(m_colours.signal, 0.16));
    m_canvas.painter().drawRoundedRect(box, 4, 4);
    m_canvas.write(box, Qt::AlignCenter, signalLetter(Signal::HomeSwitch), font(textSize, true), m_colours.signal);
    if (stretch.first > 0)
        drawEdgeLetter(stretch.first, QStringLiteral("a"));
    if (stretch.second < 1)
        drawEdgeLetter(stretch.second, QStringLiteral("b"));
}

void HomingPicture::drawEdgeLetter(double place, const QString& letter)
{
    const bool home = qFuzzyCompare(place, homeOf(m_method));
    m_canvas.write(QRectF(pixel(place) - 20, camTop - 34, 40, 32), Qt::AlignCenter, letter, font(textSize, home),
        home ? m_colours.position : m_colours.faint);
}

std::vector<Signal> HomingPicture::levelRows() const
{
    std::vector<Signal> rows = m_method.required;
    const bool half = m_method.range == HomeRange::FromNegativeEnd || m_method.range == HomeRange::ToPositiveEnd;
    if (half)
        rows.push_back(m_method.cases.back().moves.front().signal);
    return rows;
}

void HomingPicture::drawSignals()
{
    double top = signalTop;
    for (Signal signal : levelRows()) {
        drawLevel(signal, top);
        top += signalHeight;
    }
}

void HomingPicture::drawLevel(Signal signal, double top)
{
    const double high = top + 8;
    const double low = top + 36;
    const std::vector<Stretch> stretches = activeStretches(m_method, signal);
    QPainterPath path(QPointF(travelLeft, stretches.front().first > 0 ? low : high));
    QPainterPath areas;
    for (const Stretch& stretch : stretches) {
        const QRectF area(QPointF(pixel(stretch.first), high), QPointF(pixel(stretch.second), low));
        if (stretch.first > 0)
            path.lineTo(area.bottomLeft());
        path.lineTo(area.topLeft());
        path.lineTo(area.topRight());
        if (stretch.second < 1)
            path.lineTo(area.bottomRight());
        areas.addRect(area);
    }
    if (stretches.back().second < 1)
        path.lineTo(travelRight, low);
    m_canvas.painter().fillPath(areas, tint(m_colours.signal, 0.16));
    m_canvas.painter().strokePath(path, pen(m_colours.signal, LineWeight::level));
    const QString words = QStringLiteral("%1  %2").arg(signalLetter(signal), signalName(signal, m_language));
    m_canvas.write(
        QRectF(labelLeft, top, 200, signalHeight), Qt::AlignVCenter, words, font(textSize), m_colours.signal);
    const QRectF levels(labelLeft + 200, top, travelLeft - 12 - labelLeft - 200, signalHeight / 2);
    m_canvas.write(
        levels, Qt::AlignVCenter | Qt::AlignRight, levelName(true, m_language), font(smallTextSize), m_colours.faint);
    m_canvas.write(levels.translated(0, signalHeight / 2), Qt::AlignVCenter | Qt::AlignRight,
        levelName(false, m_language), font(smallTextSize), m_colours.faint);
}

void HomingPicture::drawLanes()
{
    double turns = 0;
    for (const StartingCase& start : m_method.cases)
        turns += turnsOf(start);
    const bool indexPulse = m_method.home == homing::HomePlace::NextIndexPulse;
    const double lanes = double(m_method.cases.size()) + (indexPulse ? 1 : 0);
    const double spare = (lanesBottom - lanesTop - turns * legStep) / lanes;
    double top = lanesTop;
    for (const StartingCase& start : m_method.cases) {
        const double height = turnsOf(start) * legStep + spare;
        drawLane(start, top, height);
        top += height;
    }
    if (indexPulse)
        drawFaultLane(top, spare);
}

void HomingPicture::drawLaneWords(const QStringList& words, double top, double height)
{
    m_canvas.line({ labelLeft, top }, { travelRight, top }, m_colours.frame, LineWeight::guide);
    double y = top + height / 2 - 15.0 * words.size();
    for (int i = 0; i < words.size(); ++i) {
        m_canvas.write(QRectF(labelLeft, y, labelWidth + 30, 30), Qt::AlignVCenter, words[i],
            i == 0 ? font(textSize, true) : font(commentSize), i == 0 ? m_colours.text : m_colours.faint);
        y += 30;
    }
}

void HomingPicture::drawLane(const StartingCase& start, double top, double height)
{
    drawLaneWords(startWords(m_method, start.start, m_language), top, height);
    const double depth = turnsOf(start) * legStep;
    const double firstY = top + (height - depth) / 2;
    drawLegs(legsOf(start, firstY));
    drawStart(start, firstY);
    m_canvas.placeMark({ pixel(homeOf(m_method)), firstY + depth }, 10);
}

std::vector<Leg> HomingPicture::legsOf(const StartingCase& start, double firstY) const
{
    std::vector<Leg> legs;
    double from = startOf(m_method, start);
    double y = firstY;
    for (const Move& move : start.moves) {
        const double edge = edgeOf(m_method, move);
        const bool last = legs.size() + 1 == start.moves.size();
        const double to = last ? edge : edge + sign(move.direction) * brakingDistance;
        legs.push_back({ pixel(from), pixel(to), pixel(edge), y, move.speed });
        from = to;
        y += legStep;
    }
    return legs;
}

void HomingPicture::drawStart(const StartingCase& start, double y)
{
    const double x = pixel(startOf(m_method, start));
    if (start.start == Start::MeetsLimit) {
        const double away = start.moves.front().direction == Direction::Right ? -1 : 1;
        m_canvas.line({ x, y }, { x + away * 80, y }, m_colours.speed, LineWeight::searchPath, Qt::DotLine);
        return;
    }
    if (!start.moves.empty()) {
        drawStartDot({ x, y });
        return;
    }
    // The axis stays where it starts: a ring lets the mark of the home position show.
    m_canvas.painter().setPen(pen(m_colours.text, 4));
    m_canvas.painter().setBrush(m_colours.paper);
    m_canvas.painter().drawEllipse(QPointF(x, y), 18, 18);
}

void HomingPicture::drawStartDot(QPointF centre)
{
    m_canvas.painter().setPen(pen(m_colours.paper, LineWeight::outline));
    m_canvas.painter().setBrush(m_colours.text);
    m_canvas.painter().drawEllipse(centre, 10, 10);
}

void HomingPicture::drawFaultLane(double top, double height)
{
    // Without a switch to look for, the limit on the way ends the search.
    const bool right = m_method.cases.front().moves.front().direction == Direction::Right;
    const double ahead = right ? 1 : -1;
    const double y = top + height / 2;
    const double edge = pixel(right ? positiveLimitEdge : negativeLimitEdge);
    drawLaneWords({ limitFirstWords(right ? Signal::PositiveLimit : Signal::NegativeLimit, m_language) }, top, height);
    m_canvas.line({ edge - ahead * faultWay, y }, { edge - ahead * 15, y }, m_colours.speed, LineWeight::closePath);
    drawArrowHead(
        m_canvas.painter(), { edge - ahead * 20, y }, right ? 0 : 180, LineWeight::closePath, m_colours.speed);
    drawLimitSign({ edge, y }, LimitAction::Fault);
    drawStartDot({ edge - ahead * faultWay, y });
}

void HomingPicture::drawLegs(const std::vector<Leg>& legs)
{
    for (size_t i = 0; i + 1 < legs.size(); ++i)
        drawTurn(legs[i], legs[i + 1]);
    for (const Leg& leg : legs) {
        const bool close = leg.speed == Speed::Close;
        const double weight = close ? LineWeight::closePath : LineWeight::searchPath;
        const double way = leg.to - leg.from;
        m_canvas.line({ leg.from, leg.y }, { leg.to, leg.y }, m_colours.speed, weight);
        const double tip = arrowTip(leg, arrowHeadLength(weight));
        drawArrowHead(m_canvas.painter(), { tip, leg.y }, way > 0 ? 0 : 180, weight, m_colours.speed);
    }
    for (size_t i = 0; i + 1 < legs.size(); ++i)
        drawEdgeSeen({ legs[i].edge, legs[i].y });
}

void HomingPicture::drawTurn(const Leg& leg, const Leg& next)
{
    const double weight = next.speed == Speed::Close ? LineWeight::closePath : LineWeight::searchPath;
    const double radius = (next.y - leg.y) / 2;
    const bool right = leg.to > leg.from;
    const QRectF box(leg.to - radius, leg.y, 2 * radius, 2 * radius);
    // The turn laps over the straight parts, or their rims would show as seams.
    const QPointF lap(right ? -1 : 1, 0);
    QPainterPath arc(QPointF(leg.to, leg.y) + lap);
    arc.lineTo(leg.to, leg.y);
    arc.arcTo(box, 90, right ? -180 : 180);
    arc.lineTo(QPointF(next.from, next.y) + lap);
    m_canvas.painter().strokePath(arc, QPen(m_colours.speed, weight, Qt::SolidLine, Qt::FlatCap));
}

void HomingPicture::drawEdgeSeen(QPointF centre)
{
    m_canvas.painter().setPen(pen(m_colours.signal, LineWeight::outline));
    m_canvas.painter().setBrush(m_colours.paper);
    m_canvas.painter().drawEllipse(centre, 6.5, 6.5);
}

void HomingPicture::drawLimits()
{
    m_canvas.line({ labelLeft, lanesBottom }, { travelRight, lanesBottom }, m_colours.frame, LineWeight::guide);
    m_canvas.write(QRectF(labelLeft, limitsTop, labelWidth, 40), Qt::AlignVCenter, limitsHeading(m_language),
        font(textSize, true), m_colours.text);
    if (m_method.negativeLimit == LimitAction::NoMotion) {
        m_canvas.write(QRectF(travelLeft, limitsTop, travelRight - travelLeft, 40), Qt::AlignVCenter,
            limitWords(Signal::NegativeLimit, LimitAction::NoMotion, m_language), font(textSize), m_colours.text);
        return;
    }
    drawLimit(Signal::NegativeLimit, m_method.negativeLimit, false);
    drawLimit(Signal::PositiveLimit, m_method.positiveLimit, true);
}

void HomingPicture::drawLimit(Signal limit, LimitAction action, bool atRight)
{
    const QString words = limitWords(limit, action, m_language);
    const double width = widthOf(words, textSize);
    const double signX = atRight ? travelRight - 18 : travelLeft + 18;
    drawLimitSign({ signX, limitsTop + 20 }, action);
    const double left = atRight ? signX - 28 - width : signX + 28;
    m_canvas.write(QRectF(left, limitsTop, width, 40), Qt::AlignVCenter, words, font(textSize),
        action == LimitAction::Fault ? m_colours.fault : m_colours.text);
}

void HomingPicture::drawLimitSign(QPointF centre, LimitAction action)
{
    QPainter& painter = m_canvas.painter();
    if (action == LimitAction::Fault) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_colours.fault);
        painter.drawEllipse(centre, 15, 15);
        m_canvas.line(centre - QPointF(6, 6), centre + QPointF(6, 6), m_colours.paper, 4);
        m_canvas.line(centre - QPointF(6, -6), centre + QPointF(6, -6), m_colours.paper, 4);
        return;
    }
    const bool right = centre.x() > pixel(0.5);
    painter.save();
    painter.translate(centre);
    painter.scale(right ? 1 : -1, 1);
    QPainterPath turn(QPointF(-14, -9));
    turn.lineTo(4, -9);
    turn.arcTo(QRectF(-5, -9, 18, 18), 90, -180);
    turn.lineTo(-6, 9);
    painter.strokePath(turn, QPen(m_colours.speed, 4, Qt::SolidLine, Qt::FlatCap));
    drawArrowHead(painter, { -16, 9 }, 180, 3, m_colours.speed);
    painter.restore();
}

double HomingPicture::explain(double x, double y, double signWidth, const QString& words)
{
    const double width = widthOf(words, commentSize);
    m_canvas.write(QRectF(x + signWidth, y - legendRow / 2, width, legendRow), Qt::AlignVCenter, words,
        font(commentSize), m_colours.faint);
    return x + signWidth + width + 36;
}

void HomingPicture::drawLegend()
{
    m_canvas.line({ labelLeft, legendTop - 4 }, { travelRight, legendTop - 4 }, m_colours.frame, LineWeight::guide);
    const LegendWords words = legendWords(m_language);
    const double first = legendTop + legendRow / 2;
    const double second = first + legendRow;
    double x = labelLeft;
    m_canvas.arrow({ x, first }, { x + 64, first }, m_colours.speed, LineWeight::searchPath);
    const double column = explain(x, first, 76, words.search);
    m_canvas.arrow({ x, second }, { x + 64, second }, m_colours.speed, LineWeight::closePath);
    const double next = qMax(column, explain(x, second, 76, words.close));
    drawStartDot({ next + 10, first });
    const double third = explain(next, first, 30, words.start);
    m_canvas.placeMark({ next + 10, second }, 10);
    explain(next, second, 30, words.home);
    drawEdgeSeen({ third + 8, first });
    explain(third, first, 26, words.edge);
}

} // namespace

Picture drawHomingPicture(const Method& method, Theme theme, Language language)
{
    return HomingPicture(method, theme, language).draw();
}

} // namespace drawing
