#include "resources/HomingMethods.h"

namespace homing {

namespace {

constexpr Signal N = Signal::NegativeLimit;
constexpr Signal P = Signal::PositiveLimit;
constexpr Signal H = Signal::HomeSwitch;
constexpr Signal Z = Signal::IndexPulse;
constexpr Change rise = Change::Rise;
constexpr Change fall = Change::Fall;

constexpr Move searchLeft(Signal signal, Change change)
{
    return { Direction::Left, Speed::Search, signal, change };
}

constexpr Move searchRight(Signal signal, Change change)
{
    return { Direction::Right, Speed::Search, signal, change };
}

constexpr Move closeLeft(Signal signal, Change change)
{
    return { Direction::Left, Speed::Close, signal, change };
}

constexpr Move closeRight(Signal signal, Change change)
{
    return { Direction::Right, Speed::Close, signal, change };
}

// An edge that is first met at search speed is taken again at close speed in the method's final direction. So a path
// whose search already ends at the final edge in the final direction goes back over it and comes again.

std::vector<Method> limitMethods()
{
    return {
        { 17, { N }, {}, HomeRange::None, HomePlace::NegativeLimitEdge, LimitAction::Target, LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(N, rise), closeRight(N, fall) } },
                { Start::SwitchActive, { searchRight(N, fall), searchLeft(N, rise), closeRight(N, fall) } },
            } },
        { 18, { P }, {}, HomeRange::None, HomePlace::PositiveLimitEdge, LimitAction::Fault, LimitAction::Target,
            {
                { Start::SwitchInactive, { searchRight(P, rise), closeLeft(P, fall) } },
                { Start::SwitchActive, { searchLeft(P, fall), searchRight(P, rise), closeLeft(P, fall) } },
            } },
    };
}

std::vector<Method> halfTravelMethods()
{
    return {
        { 19, { H }, { N, P }, HomeRange::ToPositiveEnd, HomePlace::CamLeft, LimitAction::Fault,
            LimitAction::ReverseOnce,
            {
                { Start::SwitchInactive, { searchRight(H, rise), closeLeft(H, fall) } },
                { Start::SwitchActive, { searchLeft(H, fall), searchRight(H, rise), closeLeft(H, fall) } },
                { Start::MeetsLimit,
                    { searchRight(P, rise), searchLeft(H, fall), searchRight(H, rise), closeLeft(H, fall) } },
            } },
        { 20, { H }, { N, P }, HomeRange::ToPositiveEnd, HomePlace::CamLeft, LimitAction::Fault,
            LimitAction::ReverseOnce,
            {
                { Start::SwitchInactive, { searchRight(H, rise), searchLeft(H, fall), closeRight(H, rise) } },
                { Start::SwitchActive, { searchLeft(H, fall), closeRight(H, rise) } },
                { Start::MeetsLimit, { searchRight(P, rise), searchLeft(H, fall), closeRight(H, rise) } },
            } },
        { 21, { H }, { N, P }, HomeRange::FromNegativeEnd, HomePlace::CamRight, LimitAction::ReverseOnce,
            LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(H, rise), closeRight(H, fall) } },
                { Start::SwitchActive, { searchRight(H, fall), searchLeft(H, rise), closeRight(H, fall) } },
                { Start::MeetsLimit,
                    { searchLeft(N, rise), searchRight(H, fall), searchLeft(H, rise), closeRight(H, fall) } },
            } },
        { 22, { H }, { N, P }, HomeRange::FromNegativeEnd, HomePlace::CamRight, LimitAction::ReverseOnce,
            LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(H, rise), searchRight(H, fall), closeLeft(H, rise) } },
                { Start::SwitchActive, { searchRight(H, fall), closeLeft(H, rise) } },
                { Start::MeetsLimit, { searchLeft(N, rise), searchRight(H, fall), closeLeft(H, rise) } },
            } },
    };
}

std::vector<Method> camFromLeftMethods()
{
    return {
        { 23, { H, P }, {}, HomeRange::Cam, HomePlace::CamLeft, LimitAction::Fault, LimitAction::ReverseOnce,
            {
                { Start::SwitchInactive, { searchRight(H, rise), closeLeft(H, fall) } },
                { Start::SwitchActive, { searchLeft(H, fall), searchRight(H, rise), closeLeft(H, fall) } },
                { Start::BehindCam,
                    { searchRight(P, rise), searchLeft(H, fall), searchRight(H, rise), closeLeft(H, fall) } },
            } },
        { 24, { H, P }, {}, HomeRange::Cam, HomePlace::CamLeft, LimitAction::Fault, LimitAction::ReverseOnce,
            {
                { Start::SwitchInactive, { searchRight(H, rise), searchLeft(H, fall), closeRight(H, rise) } },
                { Start::SwitchActive, { searchLeft(H, fall), closeRight(H, rise) } },
                { Start::BehindCam, { searchRight(P, rise), searchLeft(H, fall), closeRight(H, rise) } },
            } },
        { 25, { H, P }, {}, HomeRange::Cam, HomePlace::CamRight, LimitAction::Fault, LimitAction::ReverseOnce,
            {
                { Start::SwitchInactive, { searchRight(H, fall), closeLeft(H, rise) } },
                { Start::SwitchActive, { searchRight(H, fall), closeLeft(H, rise) } },
                { Start::BehindCam,
                    { searchRight(P, rise), searchLeft(H, rise), searchRight(H, fall), closeLeft(H, rise) } },
            } },
        { 26, { H, P }, {}, HomeRange::Cam, HomePlace::CamRight, LimitAction::Fault, LimitAction::ReverseOnce,
            {
                { Start::SwitchInactive, { searchRight(H, fall), searchLeft(H, rise), closeRight(H, fall) } },
                { Start::SwitchActive, { searchRight(H, fall), searchLeft(H, rise), closeRight(H, fall) } },
                { Start::BehindCam, { searchRight(P, rise), searchLeft(H, rise), closeRight(H, fall) } },
            } },
    };
}

std::vector<Method> camFromRightMethods()
{
    return {
        { 27, { H, N }, {}, HomeRange::Cam, HomePlace::CamRight, LimitAction::ReverseOnce, LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(H, rise), closeRight(H, fall) } },
                { Start::SwitchActive, { searchRight(H, fall), searchLeft(H, rise), closeRight(H, fall) } },
                { Start::BehindCam,
                    { searchLeft(N, rise), searchRight(H, fall), searchLeft(H, rise), closeRight(H, fall) } },
            } },
        { 28, { H, N }, {}, HomeRange::Cam, HomePlace::CamRight, LimitAction::ReverseOnce, LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(H, rise), searchRight(H, fall), closeLeft(H, rise) } },
                { Start::SwitchActive, { searchRight(H, fall), closeLeft(H, rise) } },
                { Start::BehindCam, { searchLeft(N, rise), searchRight(H, fall), closeLeft(H, rise) } },
            } },
        { 29, { H, N }, {}, HomeRange::Cam, HomePlace::CamLeft, LimitAction::ReverseOnce, LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(H, fall), closeRight(H, rise) } },
                { Start::SwitchActive, { searchLeft(H, fall), closeRight(H, rise) } },
                { Start::BehindCam,
                    { searchLeft(N, rise), searchRight(H, rise), searchLeft(H, fall), closeRight(H, rise) } },
            } },
        { 30, { H, N }, {}, HomeRange::Cam, HomePlace::CamLeft, LimitAction::ReverseOnce, LimitAction::Fault,
            {
                { Start::SwitchInactive, { searchLeft(H, fall), searchRight(H, rise), closeLeft(H, fall) } },
                { Start::SwitchActive, { searchLeft(H, fall), searchRight(H, rise), closeLeft(H, fall) } },
                { Start::BehindCam, { searchLeft(N, rise), searchRight(H, rise), closeLeft(H, fall) } },
            } },
    };
}

std::vector<Method> switchlessMethods()
{
    return {
        { 33, { Z }, {}, HomeRange::None, HomePlace::NextIndexPulse, LimitAction::Fault, LimitAction::Fault,
            { { Start::Anywhere, { closeLeft(Z, rise) } } } },
        { 34, { Z }, {}, HomeRange::None, HomePlace::NextIndexPulse, LimitAction::Fault, LimitAction::Fault,
            { { Start::Anywhere, { closeRight(Z, rise) } } } },
        { 35, {}, {}, HomeRange::None, HomePlace::PresentPosition, LimitAction::NoMotion, LimitAction::NoMotion,
            { { Start::Anywhere, {} } } },
    };
}

std::vector<Method> allMethods()
{
    std::vector<Method> all;
    for (const std::vector<Method>& group :
        { limitMethods(), halfTravelMethods(), camFromLeftMethods(), camFromRightMethods(), switchlessMethods() })
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

} // namespace

const std::vector<Method>& methods()
{
    static const std::vector<Method> all = allMethods();
    return all;
}

} // namespace homing
