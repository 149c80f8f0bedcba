#pragma once

#include <QColor>
#include <QFont>
#include <QPen>
#include <QPointF>
#include <QVector>

class QPainter;

/// What all pictures of the plug-in share: colours by meaning, line weights, arrow heads, fonts. Nothing else in this
/// folder names a colour or a line weight.
namespace drawing {

/// Background family of the workbench that a picture stands on.
enum class Theme {
    /// Light; the folder "default".
    Light,
    Dark,
};

/// Language of the words in a picture.
enum class Language {
    Chinese,
    English,
};

/// Colours of one theme, named by what they mean.
struct Palette {
    QColor paper; ///< background of a picture
    QColor frame; ///< its border, and lines that only divide
    QColor text;
    QColor faint; ///< text that comments
    QColor body; ///< outline of machine parts
    QColor fill; ///< surface of machine parts
    QColor position; ///< places that matter: the home position, distances, the table
    QColor speed; ///< paths and turning
    QColor signal; ///< switches, cams and their levels
    QColor fault; ///< danger and nothing else
};

const Palette& palette(Theme theme);

/// Line weights in pixels of the full-size picture.
struct LineWeight {
    static constexpr double guide = 1.5;
    static constexpr double outline = 2.5;
    static constexpr double level = 3.0;
    static constexpr double closePath = 3.0;
    static constexpr double searchPath = 8.0;
};

QPen pen(const QColor& colour, double weight, Qt::PenStyle style = Qt::SolidLine);

/// The font of all words: one sans-serif family that holds both languages, without hinting, so that a picture
/// drawn twice is the same picture.
QFont font(double pixelSize, bool bold = false);

/// Fills a polygon without an outline.
void fillPolygon(QPainter& painter, const QVector<QPointF>& corners, const QColor& colour);

/// Draws a filled arrow head whose tip is at `tip`, in the direction in degrees (0 to the right, 90 down).
/// The head's size follows the weight of the line that it ends.
void drawArrowHead(QPainter& painter, QPointF tip, double degrees, double lineWeight, const QColor& colour);

/// Length of the head that drawArrowHead draws, so that the line can end inside it.
double arrowHeadLength(double lineWeight);

} // namespace drawing
