#pragma once

#include "editor/AxisFinder.h"
#include "host/projectmodel/AxisModel.h"
#include "host/projectmodel/AxisTable.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestProject.h"

#include <QtTest>

#include <memory>

/// A finder on an axis that has all three pins enabled and names of its own for their controls. Base of its tests.
class AxisFinderFixture {
protected:
    inline static const QString positive = QStringLiteral("posEdit");
    inline static const QString negative = QStringLiteral("negEdit");
    inline static const QString origin = QStringLiteral("orgEdit");

    /// Around each test.
    void start();
    void stop();

    void set(const QString& key, const QString& text) { m_axis->setProperty(key, text); }
    void enable(bool positiveLimit, bool negativeLimit, bool originSignal);
    void setPins(const QString& positivePin, const QString& negativePin, const QString& originPin);
    /// Column "projectClosed" for loseRecord.
    static void waysToLoseTheRecord();
    void loseRecord(bool projectClosed);
    /// The positions that a search for an empty text visits.
    QStringList visited();

    std::unique_ptr<TestHost> m_host;
    std::unique_ptr<TestProject> m_project;
    AxisTable* m_axis = nullptr;
    std::unique_ptr<AxisFinder> m_finder;
};
