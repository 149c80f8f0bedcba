#include "tests/support/TestDiagnosisInfo.h"

#include "tests/support/CallLog.h"

TestDiagnosisInfo::TestDiagnosisInfo(CallLog& log) : m_log(log) { }

TestDiagnosisInfo::~TestDiagnosisInfo() = default;

ErrorInfo TestDiagnosisInfo::errorInfo(int errorClass, unsigned short code)
{
    m_log.add("diagnosis.errorInfo", { QString::number(errorClass), QString::number(code) });
    const ErrorInfo unknown{ QStringLiteral("name %1").arg(code), QStringLiteral("text %1").arg(code),
        QStringLiteral("remedy %1").arg(code) };
    return infos.value(code, unknown);
}
