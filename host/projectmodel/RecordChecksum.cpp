#include "host/projectmodel/RecordChecksum.h"

namespace {
constexpr quint64 prime = 0x100000001b3u;
}

// Both operations of a step, exclusive-or and multiplication by an odd number, can be undone: two contents that differ
// in one unit never meet again on the way to the end.
RecordChecksum& RecordChecksum::add(quint64 number)
{
    m_state = (m_state ^ number) * prime;
    m_state ^= m_state >> 32;
    return *this;
}

RecordChecksum& RecordChecksum::add(const QString& text)
{
    quint64 state = m_state;
    for (const QChar unit : text)
        state = (state ^ unit.unicode()) * prime;
    m_state = state;
    return add(static_cast<quint64>(text.size()));
}

RecordChecksum& RecordChecksum::add(const QMap<QString, QString>& texts)
{
    for (auto it = texts.begin(); it != texts.end(); ++it)
        add(it.key()).add(it.value());
    return add(static_cast<quint64>(texts.size()));
}
