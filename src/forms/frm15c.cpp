#include "forms/frm15c.h"

frm15c::frm15c(QWidget *parent)
    : Frm15CDWindow(Form15CDLogic::Kind::C, QStringLiteral("Form No. 15C"),
                    QStringLiteral("[See Rule 29B]\nApplication by a banking company for a certificate under "
                                   "section 195(3) of the Income-tax Act, 1961, for receipt of interest and other "
                                   "sums without deduction of tax"),
                    parent)
{
}
