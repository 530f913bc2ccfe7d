#include "forms/FormFactory.h"

#include "forms/frm15c.h"
#include "forms/frm15d.h"
#include "forms/frm15i.h"

QDialog *newFrm15c()
{
    return new frm15c;
}

QDialog *newFrm15d()
{
    return new frm15d;
}

QDialog *newFrm15i()
{
    return new frm15i;
}
