#include "tests/support/TestDiagnosisInfo.h"

#include "tests/support/CallLog.h"

namespace {
constexpr int axisDebugClass = 11;
}

TestDiagnosisInfo::TestDiagnosisInfo(CallLog& log) : m_log(log) { }

TestDiagnosisInfo::~TestDiagnosisInfo() = default;

ErrorInfo TestDiagnosisInfo::errorInfo(int errorClass, unsigned short code)
{
    m_log.add("diagnosis.errorInfo", { QString::number(errorClass), QString::number(code) });
    // Codes of other classes mean something else, so their texts must not be taken for those of axis debugging.
    const QString text = errorClass == axisDebugClass ? QStringLiteral("text %1") : QStringLiteral("other text %1");
    const ErrorInfo unknown{ QStringLiteral("name %1").arg(code), text.arg(code),
        QStringLiteral("remedy %1").arg(code) };
    return infos.value(code, unknown);
}
