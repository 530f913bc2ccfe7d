#pragma once
// What the transfer of any record form shares: the period's records read, their serials,
// one of them made current for an export or a print.
#include "shared/RecordTransfer.h"

class RecordForm;

class RecordFormTransfer : public RecordTransfer
{
public:
    bool open(QString *why) override;
    QList<int> serials() const override;

protected:
    // The form may be a member of the derived transfer, not built yet: only its address is kept.
    explicit RecordFormTransfer(RecordForm &form) : m_form(form) {}
    // Makes the stored record current; false with *why when the period has no such serial.
    bool show(int serial, QString *why);

private:
    RecordForm &m_form;
};
