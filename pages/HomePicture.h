#pragma once

#include <QString>

/// The pictures of the homing modes. Main thread only.
namespace HomePicture {

/// The last run of digits in a mode word: "Homing_35" gives 35. -1 when there is none.
int numberOfMode(const QString& word);

/// Resource path of the picture of that number, by the host's language and theme. Empty without the host's settings.
QString path(int number);

} // namespace HomePicture
