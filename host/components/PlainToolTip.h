#pragma once

#include "host/components/Export.h"

#include <QString>

/// The tool tip that reads as the text stands. Tool tips show markup, so whatever a user, a file or a program has named
/// goes through this.
KESTRUN_COMPONENTS_EXPORT QString plainToolTip(const QString& text);
