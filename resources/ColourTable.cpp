#include "resources/ColourTable.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <iterator>

namespace drawing {

namespace {

constexpr int tableSize = 256;

/// All colours of the image, the most frequent first; equal counts in the order of the values, so that the same
/// image always gives the same table.
QVector<QRgb> coloursByCount(const QImage& image)
{
    // Most pixels are as their left neighbour: counting runs spares most look-ups.
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        int start = 0;
        for (int x = 1; x <= image.width(); ++x)
            if (x == image.width() || row[x] != row[start]) {
                counts[row[start]] += x - start;
                start = x;
            }
    }
    QVector<QRgb> colours;
    std::copy(counts.keyBegin(), counts.keyEnd(), std::back_inserter(colours));
    std::sort(colours.begin(), colours.end(), [&counts](QRgb left, QRgb right) {
        const int leftCount = counts.value(left);
        const int rightCount = counts.value(right);
        return leftCount != rightCount ? leftCount > rightCount : left < right;
    });
    return colours;
}

int distance(QRgb left, QRgb right)
{
    const int red = qRed(left) - qRed(right);
    const int green = qGreen(left) - qGreen(right);
    const int blue = qBlue(left) - qBlue(right);
    return red * red + green * green + blue * blue;
}

uchar nearest(const QVector<QRgb>& table, QRgb colour)
{
    const auto best = std::min_element(table.cbegin(), table.cend(),
        [colour](QRgb left, QRgb right) { return distance(left, colour) < distance(right, colour); });
    return uchar(best - table.cbegin());
}

} // namespace

QImage withColourTable(const QImage& image)
{
    const QImage source = image.convertToFormat(QImage::Format_RGB32);
    const QVector<QRgb> colours = coloursByCount(source);
    const QVector<QRgb> table = colours.mid(0, tableSize);
    QHash<QRgb, uchar> places;
    for (QRgb colour : colours)
        places.insert(colour, nearest(table, colour));
    QImage result(source.size(), QImage::Format_Indexed8);
    result.setColorTable(table);
    for (int y = 0; y < source.height(); ++y) {
        const QRgb* from = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        uchar* to = result.scanLine(y);
        for (int x = 0; x < source.width(); ++x)
            to[x] = x > 0 && from[x] == from[x - 1] ? to[x - 1] : places.value(from[x]);
    }
    return result;
}

} // namespace drawing
