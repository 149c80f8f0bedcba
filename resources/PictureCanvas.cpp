#include "resources/PictureCanvas.h"

#include <QFontMetricsF>
#include <QLineF>

namespace drawing {

namespace {

QImage paper(QSize size, const QColor& colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

QString roomFault(const Picture& picture, const TextItem& text)
{
    if (!QRectF(picture.image.rect()).contains(text.box))
        return QStringLiteral("leaves the picture");
    // A glyph's rim may lap over by less than a pixel.
    return text.cell.adjusted(-1, -1, 1, 1).contains(text.box) ? QString() : QStringLiteral("leaves its cell");
}

} // namespace

QStringList textFaults(const Picture& picture)
{
    QStringList faults;
    for (int i = 0; i < picture.texts.size(); ++i) {
        const TextItem& text = picture.texts[i];
        const QString fault = roomFault(picture, text);
        if (!fault.isEmpty())
            faults << QStringLiteral("\"%1\" %2").arg(text.words, fault);
        for (int k = 0; k < i; ++k)
            if (text.box.intersects(picture.texts[k].box))
                faults << QStringLiteral("\"%1\" covers \"%2\"").arg(text.words, picture.texts[k].words);
    }
    return faults;
}

PictureCanvas::PictureCanvas(QSize size, Theme theme)
    : m_colours(palette(theme)), m_picture{ paper(size, m_colours.paper), {} }, m_painter(&m_picture.image)
{
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    m_painter.setPen(pen(m_colours.frame, LineWeight::outline));
    m_painter.drawRect(area().adjusted(1, 1, -1, -1));
}

void PictureCanvas::write(const QRectF& cell, int flags, const QString& words, const QFont& font, const QColor& colour)
{
    m_painter.setFont(font);
    m_painter.setPen(colour);
    const int alignment = flags | Qt::TextSingleLine | Qt::TextDontClip;
    m_painter.drawText(cell, alignment, words);
    // The ink counts: the line height of a font for both languages is far more than its letters take.
    const QFontMetricsF metrics(font);
    const QRectF row = m_painter.boundingRect(cell, alignment, words);
    const QRectF ink = metrics.tightBoundingRect(words).translated(row.left(), row.top() + metrics.ascent());
    m_picture.texts.append({ words, cell, ink });
}

void PictureCanvas::line(QPointF from, QPointF to, const QColor& colour, double weight, Qt::PenStyle style)
{
    m_painter.setPen(QPen(colour, weight, style, Qt::FlatCap));
    m_painter.drawLine(from, to);
}

void PictureCanvas::arrow(QPointF from, QPointF to, const QColor& colour, double weight, bool bothEnds)
{
    const QLineF way(from, to);
    const double inside = 0.5 * arrowHeadLength(weight) / way.length();
    line(bothEnds ? way.pointAt(inside) : from, way.pointAt(1 - inside), colour, weight);
    drawArrowHead(m_painter, to, -way.angle(), weight, colour);
    if (bothEnds)
        drawArrowHead(m_painter, from, 180 - way.angle(), weight, colour);
}

void PictureCanvas::placeMark(QPointF centre, double radius)
{
    fillPolygon(m_painter,
        { centre + QPointF(radius, 0), centre + QPointF(0, radius), centre - QPointF(radius, 0),
            centre - QPointF(0, radius) },
        m_colours.position);
}

Picture PictureCanvas::finish()
{
    m_painter.end();
    return m_picture;
}

} // namespace drawing
