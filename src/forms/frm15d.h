#pragma once
// Form 15D: application by a person other than a banking company for a certificate under
// section 195(3).
#include "forms/Frm15CDWindow.h"

class frm15d : public Frm15CDWindow
{
    Q_OBJECT
public:
    explicit frm15d(QWidget *parent = nullptr);
};
