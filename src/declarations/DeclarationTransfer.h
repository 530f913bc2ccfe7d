#pragma once
// Forms 15G and 15H in and out of files: {"serial", "declarant", "payer", "schedules"}, the
// slot arrays in slot order, each schedule an array of rows of its data cells as typed (the
// first Form 15H: one schedule, its table of income).
#include "declarations/DeclarationForm.h"
#include "shared/RecordFormTransfer.h"

class DeclarationTransfer : public RecordFormTransfer
{
public:
    explicit DeclarationTransfer(bool form15H);
    explicit DeclarationTransfer(DeclarationSlots::Design design);

    int importRecord(const JsonValue &record, QString *why) override;
    JsonValue exportRecord(int serial, QString *why) override;
    bool render(int serial, IReportObject &report, QString *why) override;

private:
    DeclarationForm m_form;
};
