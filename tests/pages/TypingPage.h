#pragma once

#include "tests/pages/ModePage.h"

#include <QPair>
#include <QVector>

/// The numeric fields of the mode and parameter page as a test of its own knows them.

struct CheckedField {
    const char* name;
    const char* key;
    double low;
    /// Key that holds the bound, if it is stored; the number is what a test stores there.
    const char* lowKey;
    double high;
    const char* highKey;

    /// The two soft limits exclude the bound that is stored.
    bool excludesStored() const;
    /// True for a number between the bounds.
    bool takes(double number) const;
};

inline const CheckedField checkedFields[] = {
    { "lineEdit", "SoftLimitNeg", -9999999, nullptr, 500, "SoftLimitPos" },
    { "lineEdit_2", "SoftLimitPos", 500, "SoftLimitNeg", 9999999, nullptr },
    { "lineEdit_12", "RotationPeriod", 0.01, nullptr, 9999999, nullptr },
    { "lineEdit_3", "LimitDec", 0, nullptr, 9999999, nullptr },
    { "lineEdit_4", "AxisErrorDec", 0.01, nullptr, 9999999, nullptr },
    { "lineEdit_6", "VelocityThreshold", 0.01, nullptr, 9999999, nullptr },
    { "lineEdit_7", "MaxVel", 0, nullptr, 9999999, nullptr },
    { "lineEdit_8", "MaxAcc", 0, nullptr, 9999999, nullptr },
    { "lineEdit_11", "JogMaxVel", 0.01, nullptr, 500, "MaxVel" },
};

struct FreeField {
    const char* name;
    const char* key;
};

inline const FreeField freeFields[] = {
    { "lineEdit_5", "FollowErrorThreshold" },
    { "lineEdit_9", "PosTorqueMaxValue" },
    { "lineEdit_10", "NegTorqueMaxValue" },
};

/// A page in an active window on which every numeric field can be typed into.
class TypingPage : public ModePage {
public:
    /// Keys and texts to store before the page opens.
    explicit TypingPage(const QVector<QPair<QString, QString>>& texts = {}, bool rotating = false);
    /// The record holds this text for the field, and the bounds that its row tells; a period is to be seen.
    TypingPage(const CheckedField& field, const QString& text);
};
