#include "forms/frm15d.h"

frm15d::frm15d(QWidget *parent)
    : Frm15CDWindow(Form15CDLogic::Kind::D, QStringLiteral("Form No. 15D"),
                    QStringLiteral("[See Rule 29B]\nApplication by a person other than a banking company for a "
                                   "certificate under section 195(3) of the Income-tax Act, 1961, for receipt of sums "
                                   "other than interest and dividends without deduction of tax"),
                    parent)
{
}
