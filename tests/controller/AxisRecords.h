#pragma once

#include "controller/MotionController.h"
#include "sdk/AxisDefaults.h"

#include <string>

/// The text of an axis with the defaults of a new record, as a project hands it over.
inline AxisText makeAxisText(int number, const AxisValues& changes = {})
{
    AxisText text;
    text.name = "Axis" + std::to_string(number);
    for (const AxisDefaultGroup* group :
        { &AxisBaseDefaults, &AxisUnitDefaults, &AxisModeDefaults, &AxisHomeDefaults }) {
        for (auto it = group->begin(); it != group->end(); ++it)
            text.values[it.key().toStdString()] = it.value().toStdString();
    }
    text.values["AxisNo"] = std::to_string(number);
    text.values["AxisType"] = "Axis_Pulse";
    text.values["MaxVel"] = "1000";
    for (const auto& change : changes)
        text.values[change.first] = change.second;
    return text;
}

/// The settings of such an axis; the changes must leave it sound.
inline AxisSettings makeAxisSettings(const AxisValues& changes = {})
{
    const AxisText text = makeAxisText(0, changes);
    AxisSettings settings;
    SettingsFault fault;
    if (!AxisSettings::read(text.name, text.values, &settings, &fault))
        qFatal("the axis of a test is not sound: %s %s", fault.key.c_str(), fault.reason.c_str());
    return settings;
}
