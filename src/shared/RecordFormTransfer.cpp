#include "shared/RecordFormTransfer.h"

#include "shared/RecordForm.h"

bool RecordFormTransfer::open(QString *why)
{
    if (m_form.load())
        return true;
    *why = m_form.loadError();
    return false;
}

QList<int> RecordFormTransfer::serials() const
{
    return m_form.serials();
}

bool RecordFormTransfer::show(int serial, QString *why)
{
    const int at = int(m_form.serials().indexOf(serial));
    if (at < 0) {
        *why = QStringLiteral("there is no %1 %2 for this deductor and year").arg(m_form.recordName().toLower()).arg(serial);
        return false;
    }
    m_form.moveTo(at);
    return true;
}
