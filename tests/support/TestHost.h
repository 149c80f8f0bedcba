#pragma once

#include "sdk/IApplication.h"
#include "tests/support/CallLog.h"
#include "tests/support/TestBackgroundTransactions.h"
#include "tests/support/TestComparatorMan.h"
#include "tests/support/TestConfiguration.h"
#include "tests/support/TestDiagnosisInfo.h"
#include "tests/support/TestEditorManager.h"
#include "tests/support/TestLogManager.h"
#include "tests/support/TestTransfer.h"
#include "tests/support/TestVariableMonitor.h"
#include "tests/support/TestView.h"
#include "tests/support/TestViewHelper.h"

#include <QSet>

/// A host with light services that really work. Publishes itself for its scope; one at a time.
///
/// Whatever uses the host (plug-in objects, editors, pages) has to be gone before it, but for editors in its editor
/// manager, which it closes itself: their factory has to outlive the host then, or closeAllEditors() be called before.
class TestHost : public IApplication {
    Q_OBJECT

public:
    TestHost();
    ~TestHost() override;

    IManager* manager(const QString& name) override;

    /// Takes a service out of the table, or for "editor" the manager, as if the host lacked it.
    void withhold(const QString& key);
    /// Puts it in again.
    void restore(const QString& key);
    /// All keys that can be withheld: the services of the table, then "editor".
    static QStringList keys();

    CallLog calls;
    TestView view{ calls };
    TestViewHelper viewHelper{ calls };
    TestEditorManager editorManager{ calls };
    TestConfiguration cookies{ calls, QByteArrayLiteral("cookies") };
    TestConfiguration settings{ calls, QByteArrayLiteral("settings") };
    TestTransfer transfer{ calls };
    TestComparatorMan comparatorMan{ calls };
    TestBackgroundTransactions background{ calls };
    TestVariableMonitor variableMonitor{ calls };
    TestDiagnosisInfo diagnosisInfo{ calls };
    TestLogManager logManager{ calls };

private:
    QObject* serviceOf(const QString& key);

    QSet<QString> m_withheldManagers;
};
