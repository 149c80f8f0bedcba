#pragma once

#include "resources/DrawingStyle.h"

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVector>

namespace drawing {

/// Words in a picture, kept so that they can be checked against their room.
struct TextItem {
    QString words;
    QRectF cell; ///< the room that the layout gives them
    QRectF box; ///< what they really cover
};

/// A drawn picture with the words in it.
struct Picture {
    QImage image;
    QVector<TextItem> texts;
};

/// Texts of the picture that leave their cell or the picture, or cover another text, each as a line for a person.
/// Empty: all is well.
QStringList textFaults(const Picture& picture);

/// Paper to draw one explaining picture on, with its frame already drawn.
class PictureCanvas {
public:
    PictureCanvas(QSize size, Theme theme);

    QPainter& painter() { return m_painter; }
    const Palette& colours() const { return m_colours; }
    QRectF area() const { return m_picture.image.rect(); }

    /// Writes on one line, aligned in the cell by `flags` (Qt::Alignment), and remembers the words.
    void write(const QRectF& cell, int flags, const QString& words, const QFont& font, const QColor& colour);

    /// A straight line of the given weight with flat ends.
    void line(QPointF from, QPointF to, const QColor& colour, double weight, Qt::PenStyle style = Qt::SolidLine);

    /// A straight line that ends in an arrow head with its tip at `to`; with `bothEnds` another one at `from`.
    void arrow(QPointF from, QPointF to, const QColor& colour, double weight, bool bothEnds = false);

    /// The rhombus that marks a place that counts, such as the home position.
    void placeMark(QPointF centre, double radius);

    /// The picture as drawn so far. Nothing can be drawn afterwards.
    Picture finish();

private:
    const Palette& m_colours;
    Picture m_picture;
    QPainter m_painter;
};

} // namespace drawing
