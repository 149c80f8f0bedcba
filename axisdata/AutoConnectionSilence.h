#pragma once

#include <QByteArrayList>
#include <QtGlobal>

/// Set around the setupUi of a page whose slots are named like automatic connections without being meant as such. While
/// it lives, Qt's warning that no signal matches is kept quiet for the slots given, by name and on this thread; every
/// other message goes where it went before. Main thread, on the stack, may nest.
class AutoConnectionSilence {
public:
    /// Normalised signatures such as "on_lineEdit_TextChanged()".
    explicit AutoConnectionSilence(const QByteArrayList& slotSignatures);
    ~AutoConnectionSilence();
    Q_DISABLE_COPY(AutoConnectionSilence)

private:
    QByteArrayList m_outer;
};
