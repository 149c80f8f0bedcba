#include "axisdata/AutoConnectionSilence.h"

#include <atomic>

namespace {

/// Other threads may report something meanwhile, so each sees only the slots it has silenced itself: none.
thread_local QByteArrayList silenced; // NOLINT: making an empty list cannot fail
std::atomic<QtMessageHandler> behind{ nullptr };
int nesting = 0;

bool isSilenced(const QString& message)
{
    const QLatin1String prefix("QMetaObject::connectSlotsByName: No matching signal for ");
    return message.startsWith(prefix) && silenced.contains(message.mid(prefix.size()).toLatin1());
}

void passOn(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg && isSilenced(message))
        return;
    behind.load()(type, context, message);
}

} // namespace

AutoConnectionSilence::AutoConnectionSilence(const QByteArrayList& slotSignatures) : m_outer(silenced)
{
    silenced = slotSignatures;
    if (nesting++ > 0)
        return;
    // The handler behind is known before a message of another thread can arrive at this one.
    behind.store(qInstallMessageHandler(nullptr));
    qInstallMessageHandler(passOn);
}

AutoConnectionSilence::~AutoConnectionSilence()
{
    silenced = m_outer;
    if (--nesting == 0)
        qInstallMessageHandler(behind.load());
}
