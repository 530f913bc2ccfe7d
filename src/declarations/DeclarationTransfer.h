#pragma once
// Forms 15G and 15H in and out of files: {"serial", "declarant", "payer", "schedules"}, the
// slot arrays in slot order, each schedule an array of rows of its data cells as typed.
#include "declarations/DeclarationForm.h"
#include "shared/RecordTransfer.h"

class DeclarationTransfer : public RecordTransfer
{
public:
    explicit DeclarationTransfer(bool form15H);

    bool open(QString *why) override;
    int importRecord(const JsonValue &record, QString *why) override;
    QList<int> serials() const override;
    JsonValue exportRecord(int serial, QString *why) override;
    bool render(int serial, IReportObject &report, QString *why) override;

private:
    bool show(int serial, QString *why);

    DeclarationForm m_form;
};
