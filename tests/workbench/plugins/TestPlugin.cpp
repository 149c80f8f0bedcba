#include "sdk/PluginInterface.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariant>

#ifndef TEST_IID
#define TEST_IID KESTRUN_PLUGIN_IID
#endif

/// A plug-in that notes what is done to it in the property "TestPluginCalls" of the application. What it says of
/// itself comes from the build.
class TestPlugin : public PluginInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TEST_IID)
    Q_INTERFACES(PluginInterface)

public:
    TestPlugin() { packageText = package(); }
    ~TestPlugin() override { note("gone"); }

    bool initialize() override
    {
        note("initialize");
        return TEST_INITIALIZE;
    }

    void finish() override { note("finish"); }

public slots:
    void onApplyOption(QString) { note("apply"); }

private:
    static QString package()
    {
        const QString text = QStringLiteral("{ \"name\": \"%1\", \"version\": \"%2\", \"descript\": { \"en_US\": "
                                            "\"Plug-in %1\", \"zh_CN\": \"插件 %1\" }, \"dependencies\": { %3 }, "
                                            "\"forceLoad\": %4 }");
        return text.arg(QStringLiteral(TEST_NAME), QStringLiteral(TEST_VERSION), QStringLiteral(TEST_NEEDS),
            QStringLiteral(TEST_FORCE));
    }

    static void note(const char* what)
    {
        QStringList calls = qApp->property("TestPluginCalls").toStringList();
        calls.append(QStringLiteral("%1 %2").arg(QLatin1String(what), QStringLiteral(TEST_NAME)));
        qApp->setProperty("TestPluginCalls", calls);
    }
};

#include "TestPlugin.moc"
