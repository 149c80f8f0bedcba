#include "resources/HomingWords.h"

#include <QVector>

namespace drawing {

namespace {

using homing::Change;
using homing::Direction;
using homing::HomePlace;
using homing::HomeRange;
using homing::LimitAction;
using homing::Method;
using homing::Move;
using homing::Signal;
using homing::Start;

QString say(Language language, const QString& english, const QString& chinese)
{
    return language == Language::English ? english : chinese;
}

QString lettersOf(const std::vector<Signal>& list, Language language)
{
    QStringList letters;
    for (Signal signal : list)
        letters << signalLetter(signal);
    return letters.join(say(language, QStringLiteral(", "), QStringLiteral("、")));
}

QString side(Direction direction, Language language)
{
    return direction == Direction::Left ? say(language, QStringLiteral("left"), QStringLiteral("左"))
                                        : say(language, QStringLiteral("right"), QStringLiteral("右"));
}

QString edgeRule(const QString& place, const Move& last, Language language)
{
    const QString change = last.change == Change::Rise
        ? say(language, QStringLiteral("turns on"), QStringLiteral("变为有效"))
        : say(language, QStringLiteral("turns off"), QStringLiteral("变为无效"));
    return say(
        language, QStringLiteral("home at %1, where %2 %3 moving %4"), QStringLiteral("原点在 %1 处：向%4移动时 %2 %3"))
        .arg(place, signalLetter(last.signal), change, side(last.direction, language));
}

/// The switch that the method's starts are told by.
Signal mainSwitch(const Method& method)
{
    return method.required.front();
}

QString behindCamWords(const Method& method, Language language)
{
    const bool startsRight = method.cases.back().moves.front().direction == Direction::Right;
    return say(language, QStringLiteral("%1 of the cam, %2 first"), QStringLiteral("凸轮%1侧，先遇到 %2"))
        .arg(side(startsRight ? Direction::Right : Direction::Left, language),
            signalLetter(method.cases.back().moves.front().signal));
}

QString beforeCamWords(const Method& method, Language language)
{
    const bool movesRight = method.cases.front().moves.front().direction == Direction::Right;
    return say(language, QStringLiteral("%1 of the cam"), QStringLiteral("凸轮%1侧"))
        .arg(side(movesRight ? Direction::Left : Direction::Right, language));
}

QString startAt(const Method& method, bool active, Language language)
{
    return say(language, QStringLiteral("Start with %1 %2"), QStringLiteral("起点：%1 %2"))
        .arg(signalLetter(mainSwitch(method)), levelName(active, language));
}

} // namespace

QString signalLetter(Signal signal)
{
    switch (signal) {
    case Signal::NegativeLimit:
        return QStringLiteral("N");
    case Signal::PositiveLimit:
        return QStringLiteral("P");
    case Signal::HomeSwitch:
        return QStringLiteral("H");
    case Signal::IndexPulse:
        break;
    }
    return QStringLiteral("Z");
}

QString signalName(Signal signal, Language language)
{
    switch (signal) {
    case Signal::NegativeLimit:
        return say(language, QStringLiteral("negative limit"), QStringLiteral("负限位"));
    case Signal::PositiveLimit:
        return say(language, QStringLiteral("positive limit"), QStringLiteral("正限位"));
    case Signal::HomeSwitch:
        return say(language, QStringLiteral("home switch"), QStringLiteral("原点开关"));
    case Signal::IndexPulse:
        break;
    }
    return say(language, QStringLiteral("index pulse"), QStringLiteral("零位脉冲"));
}

QString levelName(bool active, Language language)
{
    return active ? say(language, QStringLiteral("on"), QStringLiteral("有效"))
                  : say(language, QStringLiteral("off"), QStringLiteral("无效"));
}

QString methodTitle(const Method& method, Language language)
{
    return say(language, QStringLiteral("Mode %1"), QStringLiteral("模式 %1")).arg(method.number);
}

QString homeRule(const Method& method, Language language)
{
    switch (method.home) {
    case HomePlace::PresentPosition:
        return say(language, QStringLiteral("home where the axis stands, without motion"),
            QStringLiteral("不移动，当前位置即为原点"));
    case HomePlace::NextIndexPulse:
        return say(language, QStringLiteral("home at the next index pulse Z, moving %1"),
            QStringLiteral("向%1移动，下一个零位脉冲 Z 处为原点"))
            .arg(side(method.cases.front().moves.back().direction, language));
    case HomePlace::CamLeft:
        return edgeRule(QStringLiteral("a"), method.cases.front().moves.back(), language);
    case HomePlace::CamRight:
        return edgeRule(QStringLiteral("b"), method.cases.front().moves.back(), language);
    case HomePlace::NegativeLimitEdge:
    case HomePlace::PositiveLimitEdge:
        break;
    }
    return edgeRule(say(language, QStringLiteral("the edge of %1"), QStringLiteral("%1 边沿"))
                        .arg(signalLetter(mainSwitch(method))),
        method.cases.front().moves.back(), language);
}

QString neededSignals(const Method& method, Language language)
{
    if (method.required.empty())
        return say(language, QStringLiteral("needs no signal"), QStringLiteral("无需信号"));
    QString needed = say(language, QStringLiteral("needs %1"), QStringLiteral("需要信号 %1"))
                         .arg(lettersOf(method.required, language));
    if (method.advised.empty())
        return needed;
    return needed
        + say(language, QStringLiteral(" (%1 advised)"), QStringLiteral("（建议 %1）"))
              .arg(lettersOf(method.advised, language));
}

QStringList startWords(const Method& method, Start start, Language language)
{
    switch (start) {
    case Start::SwitchInactive:
        if (method.range == HomeRange::Cam)
            return { startAt(method, false, language), beforeCamWords(method, language) };
        return { startAt(method, false, language) };
    case Start::SwitchActive:
        return { startAt(method, true, language) };
    case Start::BehindCam:
        return { startAt(method, false, language), behindCamWords(method, language) };
    case Start::MeetsLimit:
        return { say(language, QStringLiteral("%1 met on the way"), QStringLiteral("途中遇到 %1"))
                     .arg(signalLetter(method.cases.back().moves.front().signal)) };
    case Start::Anywhere:
        break;
    }
    return { say(language, QStringLiteral("Start anywhere"), QStringLiteral("任意起点")) };
}

QString limitWords(Signal limit, LimitAction action, Language language)
{
    const QString letter = signalLetter(limit);
    switch (action) {
    case LimitAction::NoMotion:
        return say(language, QStringLiteral("the axis does not move and meets none"),
            QStringLiteral("轴不移动，不会遇到限位"));
    case LimitAction::Target:
        return say(language, QStringLiteral("%1: reverse, home is here"), QStringLiteral("%1：反向，此处回零"))
            .arg(letter);
    case LimitAction::ReverseOnce:
        return say(language, QStringLiteral("%1: reverse once, a second limit is a fault"),
            QStringLiteral("%1：反向一次，再遇限位报故障"))
            .arg(letter);
    case LimitAction::Fault:
        break;
    }
    return say(language, QStringLiteral("%1: fault"), QStringLiteral("%1：故障")).arg(letter);
}

QString limitFirstWords(Signal limit, Language language)
{
    return say(language, QStringLiteral("%1 before a pulse"), QStringLiteral("先遇到 %1")).arg(signalLetter(limit));
}

QString limitsHeading(Language language)
{
    return say(language, QStringLiteral("At a limit"), QStringLiteral("遇到限位时"));
}

LegendWords legendWords(Language language)
{
    if (language == Language::English)
        return { QStringLiteral("start"), QStringLiteral("search at Home Speed"),
            QStringLiteral("last stretch at Home Close Speed"), QStringLiteral("edge seen"),
            QStringLiteral("home position, reads the home offset") };
    return { QStringLiteral("起点"), QStringLiteral("以回零速度搜索"), QStringLiteral("最后一段以回零接近速度"),
        QStringLiteral("检测到边沿"), QStringLiteral("原点，位置值等于原点偏移") };
}

} // namespace drawing
