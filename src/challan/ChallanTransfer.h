#pragma once
// Challans in and out of files: one object per challan with the header's members, the
// payment options as true/false and the section rows as objects. A challan with section
// rows belongs to the current form ("new"), one without to the older form ("old").
#include "challan/ChallanForm.h"
#include "shared/RecordTransfer.h"

#include <QSet>

class ChallanTransfer : public RecordTransfer
{
public:
    ChallanTransfer();

    bool open(QString *why) override;
    int importRecord(const JsonValue &record, QString *why) override;
    QList<int> serials() const override;
    JsonValue exportRecord(int serial, QString *why) override;
    bool render(int serial, IReportObject &report, QString *why) override;

private:
    // The form of the stored challan, showing it; null with *why.
    ChallanForm *show(int serial, QString *why);

    ChallanForm m_current;
    ChallanForm m_older;
    QSet<int> m_stored;
};
