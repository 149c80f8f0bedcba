#include "controller/HomingMethod.h"

#include <cctype>

namespace {
constexpr int left = -1;
constexpr int right = 1;
constexpr int none = 0;
constexpr auto a = SignalEdge::Left;
constexpr auto b = SignalEdge::Right;
constexpr auto n = HomingSignal::NegativeLimit;
constexpr auto p = HomingSignal::PositiveLimit;
constexpr auto h = HomingSignal::HomeSwitch;
constexpr auto z = HomingSignal::Index;

constexpr HomingMethod methods[] = {
    { 17, n, b, right, left, right, none },
    { 18, p, a, left, right, left, none },
    { 19, h, a, left, right, left, right },
    { 20, h, a, right, right, left, right },
    { 21, h, b, right, left, right, left },
    { 22, h, b, left, left, right, left },
    { 23, h, a, left, right, left, right },
    { 24, h, a, right, right, left, right },
    { 25, h, b, left, right, right, right },
    { 26, h, b, right, right, right, right },
    { 27, h, b, right, left, right, left },
    { 28, h, b, left, left, right, left },
    { 29, h, a, right, left, left, left },
    { 30, h, a, left, left, left, left },
    { 33, z, a, left, left, left, none },
    { 34, z, a, right, right, right, none },
    { 35, HomingSignal::None, a, none, none, none, none },
};
} // namespace

const HomingMethod* findHomingMethod(int number)
{
    for (const HomingMethod& method : methods) {
        if (method.number == number)
            return &method;
    }
    return nullptr;
}

int homingNumber(const std::string& word)
{
    int number = 0;
    bool inside = false;
    for (const char c : word) {
        const bool digit = std::isdigit(static_cast<unsigned char>(c)) != 0;
        if (digit && !inside)
            number = 0;
        if (digit && number < 1000)
            number = number * 10 + (c - '0');
        inside = digit;
    }
    return number;
}
