#include "workbench/DiagnosisTable.h"

#include "host/projectmodel/ControllerDescription.h"
#include "sdk/IConfiguration.h"
#include "sdk/ServiceKeys.h"

#include <QLocale>

DiagnosisTable::DiagnosisTable(const IConfiguration& settings, Controller controller, QObject* parent)
    : DeviceDiagnosiInfo(parent), m_settings(settings), m_controller(std::move(controller))
{
}

DiagnosisTable::~DiagnosisTable() = default;

namespace {

QString inLanguage(const QMap<QString, QString>& texts, const QString& language)
{
    return texts.value(language, texts.value(QStringLiteral("en_US")));
}

} // namespace

ErrorInfo DiagnosisTable::errorInfo(int errorClass, unsigned short code)
{
    const ControllerDescription* controller = m_controller();
    const QHash<quint16, DiagnosisEntry> table
        = controller ? controller->diagnosis(errorClass) : QHash<quint16, DiagnosisEntry>();
    const auto found = table.constFind(code);
    if (found == table.constEnd())
        return unknown(code, controller);
    const QString language = m_settings.value(Solution::ConfigKey::language(), QLocale::system().name()).toString();
    return { inLanguage(found->name, language), inLanguage(found->text, language),
        inLanguage(found->remedy, language) };
}

ErrorInfo DiagnosisTable::unknown(unsigned short code, const ControllerDescription* controller) const
{
    const QString number = tr("%1 (16#%2)").arg(code).arg(code, 4, 16, QLatin1Char('0'));
    const QString text = controller
        ? tr("The diagnosis table of the controller %1 does not know the error %2.").arg(controller->model(), number)
        : tr("No project is open that could explain the error %1.").arg(number);
    return { tr("Unknown error"), text, QString() };
}
