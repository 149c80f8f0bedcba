#pragma once

/// Within so many ms a silent link is noticed and what moves over it brakes. A sanitizer slows both ends down by as
/// much as the promise leaves over, so that a second more is allowed there; the bench of the cut link asks for the
/// promise itself.
#ifdef KESTRUN_SANITIZED
constexpr int silenceNoticedMs = 3000;
#else
constexpr int silenceNoticedMs = 2000;
#endif
