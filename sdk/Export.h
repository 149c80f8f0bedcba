#pragma once

#include <QtGlobal>

#if defined(KESTRUN_SDK_BUILD)
#define KESTRUN_SDK_EXPORT Q_DECL_EXPORT
#else
#define KESTRUN_SDK_EXPORT Q_DECL_IMPORT
#endif
