#pragma once
// Form 15C: application by a banking company for a certificate under section 195(3).
#include "forms/Frm15CDWindow.h"

class frm15c : public Frm15CDWindow
{
    Q_OBJECT
public:
    explicit frm15c(QWidget *parent = nullptr);
};
