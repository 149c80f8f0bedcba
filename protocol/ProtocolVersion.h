#pragma once

#include <cstdint>

/// Version of the service. Both sides must have the same one; it grows with every change that an older side would
/// misunderstand.
constexpr std::uint32_t protocolVersion = 1;

/// Length of a session's identity and of a token in bytes.
constexpr int protocolSessionLength = 16;
