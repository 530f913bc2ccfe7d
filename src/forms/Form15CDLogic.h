#pragma once
// Forms 15C and 15D: one row of text fields per deductor-year, printed as the statutory
// application. The two differ only in table, slots and printed text.
#include "shared/PeriodRowForm.h"

class ReportRows;

class Form15CDLogic : public PeriodRowForm
{
public:
    enum class Kind { C, D };

    explicit Form15CDLogic(Kind kind);

    Kind kind() const { return m_kind; }
    QString module() const override;          // "frm15c" / "frm15d"
    QString documentBase() const override;    // "Form15C" / "Form15D"

    // The statutory text, row by row, into the report object's current report.
    void buildReport() override;

    static SlotTable slotsOf(Kind kind);

private:
    void buildReport15C();
    void buildReport15D();
    void salutation(ReportRows &row);
    void closing(ReportRows &row);

    Kind m_kind;
};
