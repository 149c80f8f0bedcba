#pragma once

#include "protocol/controller.pb.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

// Contents of requests that no sound client sends, drawn from a seed.

using Random = std::mt19937;

inline double oddNumber(Random& random)
{
    static const double odd[] = { 0, -0.0, 1, -1, 1e-300, -1e-300, 1e300, -1e300, std::nan(""), INFINITY, -INFINITY, 5,
        -5, 1e9, -1e9, 0.5, 100, 1e-9 };
    if (random() % 4 == 0) {
        double value = 0;
        const std::uint64_t bits = (std::uint64_t(random()) << 32) | random();
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    return odd[random() % std::size(odd)];
}

inline int oddInteger(Random& random)
{
    static const int odd[] = { 0, 1, 2, 3, -1, 255, 256, 32767, -32768, 65536, INT_MAX, INT_MIN };
    return odd[random() % std::size(odd)];
}

inline std::string oddText(Random& random)
{
    static const char* const odd[] = { "", "0", "-1", "1", "TRUE", "FALSE", "nan", "inf", "-inf", "1e308", "1e309",
        "1,5", "0x10", "99999999999999999999999999", "Axis_Pulse", "Axis_Virtual", "Homing_17", "Homing_", "\xff\xfe",
        " 5", "5 ", "+5", "++5", "1e-320", "-0", "1e-9", "1e9", "1e-300", "1e15", "4294967295", "0.01", "0.5" };
    if (random() % 5 == 0)
        return std::string(random() % 300, static_cast<char>('0' + random() % 60));
    return odd[random() % std::size(odd)];
}

template <typename Request>
Request ofAxis(int axis)
{
    Request request;
    request.set_axis(axis);
    return request;
}

inline kestrun::protocol::MotionRequest oddMotion(Random& random, int axis)
{
    auto request = ofAxis<kestrun::protocol::MotionRequest>(axis);
    request.set_pressed(random() % 4 ? 1 : oddInteger(random));
    request.set_position(oddNumber(random));
    request.set_velocity(random() % 2 ? 50 : oddNumber(random));
    request.set_acceleration(random() % 2 ? 1000 : oddNumber(random));
    request.set_deceleration(random() % 2 ? 1000 : oddNumber(random));
    request.set_jerk(random() % 2 ? 0 : oddNumber(random));
    return request;
}

inline kestrun::protocol::EnterDebugModeRequest oddEntering(Random& random, int axis)
{
    auto request = ofAxis<kestrun::protocol::EnterDebugModeRequest>(axis);
    request.set_enter(random() % 3 ? 1 : oddInteger(random));
    request.set_timeout(random() % 2 ? 30000 : oddInteger(random));
    return request;
}

inline kestrun::protocol::FlagRequest oddFlag(Random& random, int axis)
{
    auto request = ofAxis<kestrun::protocol::FlagRequest>(axis);
    request.set_value(random() % 2 ? 1 : oddInteger(random));
    return request;
}

inline kestrun::protocol::PositionRequest oddPosition(Random& random, int axis)
{
    auto request = ofAxis<kestrun::protocol::PositionRequest>(axis);
    request.set_position(oddNumber(random));
    return request;
}

inline kestrun::protocol::StatusRequest oddStatus(Random& random, int axis)
{
    auto request = ofAxis<kestrun::protocol::StatusRequest>(axis);
    request.set_size(oddInteger(random));
    return request;
}

inline kestrun::protocol::StopAllRequest oddStop(Random& random)
{
    kestrun::protocol::StopAllRequest request;
    request.set_hold(random() % 6 == 0);
    request.set_number(random() % 2 ? 0 : static_cast<std::uint64_t>(oddInteger(random)));
    request.set_seen(random() % 2 ? 0 : static_cast<std::uint64_t>(oddInteger(random)));
    return request;
}

inline kestrun::protocol::CurvesRequest oddCurves(Random& random)
{
    kestrun::protocol::CurvesRequest request;
    for (auto count = random() % 20; count > 0; --count)
        request.add_axes(random() % 2 ? static_cast<int>(random() % 4) : oddInteger(random));
    return request;
}

/// Breaks a message in one of the ways in which bytes get lost, doubled or changed.
inline std::string altered(std::string bytes, Random& random)
{
    for (auto times = 1 + random() % 3; times > 0 && !bytes.empty(); --times) {
        const std::size_t at = random() % bytes.size();
        switch (random() % 5) {
        case 0:
            bytes.resize(at);
            break;
        case 1:
            bytes.insert(at, bytes, at / 2, random() % 20);
            break;
        case 2:
            bytes.erase(at, 1 + random() % 4);
            break;
        case 3:
            bytes[at] = static_cast<char>(random());
            break;
        default:
            bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8));
        }
    }
    return bytes;
}
