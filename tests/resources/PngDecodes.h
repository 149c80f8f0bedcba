#pragma once

#include <QStringList>

/// Which PNG files have been decoded in this process, in order, each time it happened. Works by an image plug-in that
/// stands before Qt's own reader and hands on to it; PngDecodes.cpp brings it in. Main thread only.
namespace PngDecodes {

/// Names of the files since the last call.
QStringList take();

} // namespace PngDecodes
