#include "tests/pages/ExpectedVisibility.h"

namespace {

struct Row {
    const char* controls;
    /// One letter each for pulse, encoder, virtual, EtherCAT: s shown, h hidden, . left alone, r by a rule.
    const char* cells;
};

const Row table[] = {
    { "label_2 groupBox", "shhs" },
    { "label_4 stackedWidget", "...s" },
    { "label_13 groupBox_4", "shss" },
    { "label_18 groupBox_5", "shss" },
    { "label_23 groupBox_6", "shss" },
    { "label_29 label_30", "h.h." },
    { "lineEdit_11", "hsh." },
    { "label_28 groupBox_7", "hhhs" },
    { "label_16 groupBox_8", "shsh" },
    { "label_34 groupBox_9", "hhhs" },
    { "label_39 groupBox_11", "rshh" },
    { "widget", "srss" },
    { "widget_2 label_41 outputMethodComboBox label_45 inputSignalComboBox", "hs.." },
    { "widget_3", "hr.." },
    { "label_44 lineEdit_13 label_43", "hh.." },
    { "checkBox_4 inputPinComboBox", "hs.." },
    { "label_40 groupBox_12", "shhh" },
    { "label_49 pulseMethodComboBox", "sh.." },
    { "label_36 groupBox_13", "rrhh" },
};

/// Hidden by every load and shown by nothing.
const char* const buried = "label_14 lineEdit_5 label_15 label_46 lineEdit_14 label_47 label_48 radioButton_5 "
                           "radioButton_6";

QStringList words(const QString& text)
{
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char(' '));
}

QStringList words(const char* text)
{
    return words(QString::fromLatin1(text));
}

/// What a cell of the table that goes by a rule says, written out for each group and type.
bool byRule(const QString& control, const QString& type, const QString& model, uint device)
{
    const bool slow = (isNv2(model) && device > 1) || (isTwelve(model) && device > 3);
    if (control == QLatin1String("label_39") || control == QLatin1String("groupBox_11")
        || control == QLatin1String("widget"))
        return !slow;
    if (control == QLatin1String("widget_3"))
        return !isNv2(model);
    if (type == QLatin1String("Axis_Pulse"))
        return isNv3(model) && !(isTwelve(model) && device > 3);
    return !isNv2(model) && !(isTwelve(model) && device > 3);
}

} // namespace

bool isNv2(const QString& model)
{
    return model.startsWith(QLatin1String("NV2_"));
}

bool isNv3(const QString& model)
{
    return model.startsWith(QLatin1String("NV3T_"));
}

bool isTwelve(const QString& model)
{
    return model.startsWith(QLatin1String("NV3T_70Q12"));
}

QStringList buriedControls()
{
    return words(buried);
}

ExpectedVisibility::ExpectedVisibility(const ModePage& page)
{
    for (auto entry = page.widgets.begin(); entry != page.widgets.end(); ++entry) {
        const QString& name = entry.key();
        // The stack shows one page at a time by itself, and the scroll area has parts of its own.
        if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")) && name != QLatin1String("page")
            && name != QLatin1String("page_2"))
            m_shown.insert(name, true);
    }
}

void ExpectedVisibility::apply(const QString& type, const QString& model, uint device)
{
    for (const QString& name : buriedControls())
        m_shown[name] = false;
    m_shown[QStringLiteral("probe2checkBox")] = isNv3(model);
    m_shown[QStringLiteral("probe2ComboBox")] = isNv3(model);
    const int column = allAxisTypes().indexOf(type);
    for (const Row& row : table)
        for (const QString& name : words(row.controls))
            applyCell(name, row.cells[column], byRule(name, type, model, device));
}

QStringList ExpectedVisibility::differences(const ModePage& page) const
{
    QStringList wrong;
    for (auto entry = m_shown.begin(); entry != m_shown.end(); ++entry) {
        const QWidget* widget = page.widgets.value(entry.key());
        if (!widget || widget->isHidden() == entry.value())
            wrong.append(entry.key() + (entry.value() ? QStringLiteral(" is hidden") : QStringLiteral(" is shown")));
    }
    return wrong;
}

void ExpectedVisibility::applyCell(const QString& name, char cell, bool rule)
{
    if (!m_shown.contains(name))
        qFatal("no control %s", qPrintable(name));
    if (cell != '.')
        m_shown[name] = cell == 's' || (cell == 'r' && rule);
}
