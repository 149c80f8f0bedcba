#include "host/projectmodel/AxisTrial.h"

#include "host/projectmodel/AxisTable.h"

AxisTrial::AxisTrial(AxisTable& axis) : m_axis(&axis), m_properties(axis.m_data.properties), m_pageBuild(axis.pageBuild)
{
    axis.m_onTrial = true;
}

AxisTrial::~AxisTrial()
{
    if (!m_axis)
        return;
    m_axis->m_data.properties = m_properties;
    m_axis->pageBuild = m_pageBuild;
    m_axis->m_onTrial = false;
}
